#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>

#include "orlan/base/text.hpp"
#include "tools/orlan/simulate/Player.hpp"
#include "tools/orlan/simulate/ScenarioReader.hpp"

namespace orlan::simulate {
namespace {

namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

const fs::path folder = fs::path(ORLAN_SOURCE_DIR) / "tests" / "scenarios";
constexpr std::string_view expectedSuffix = ".expected.jsonl";

struct Journey {
  fs::path scenario;
  std::vector<fs::path> expectations;
};

std::vector<Journey> journeys() {
  std::map<std::string, Journey> byName;
  for (const auto& entry : fs::directory_iterator(folder)) {
    const std::string file = entry.path().filename().string();
    const std::string name = file.substr(0, file.find('.'));
    if (file.ends_with(expectedSuffix)) {
      byName[name].expectations.push_back(entry.path());
    } else if (entry.path().extension() == ".json") {
      byName[name].scenario = entry.path();
    }
  }
  std::vector<Journey> all;
  for (auto& [name, journey] : byName) all.push_back(std::move(journey));
  return all;
}

Lines play(const fs::path& scenarioFile, std::set<std::string, std::less<>> only) {
  const auto scenario = readScenario(scenarioFile.string());
  if (!scenario) return {scenario.error().description};
  Lines lines;
  Player player(
      *scenario, [&](std::string_view line) { lines.emplace_back(line); }, std::move(only));
  player.play();
  return lines;
}

/// "walk.log+request.expected.jsonl": log and request; "walk.expected.jsonl": everything.
std::set<std::string, std::less<>> eventsIn(const fs::path& expectation) {
  std::string name = expectation.filename().string();
  name.resize(name.size() - expectedSuffix.size());
  const auto dot = name.find('.');
  if (dot == std::string::npos) return {};
  const auto events = text::split(name.substr(dot + 1), '+');
  return {events.begin(), events.end()};
}

Lines linesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  Lines lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line + "\n");
  return lines;
}

class JourneyTest : public ::testing::TestWithParam<Journey> {};

TEST_P(JourneyTest, TheOutsideWorldSeesWhatIsExpected) {
  ASSERT_FALSE(GetParam().scenario.empty()) << "an expectation without a scenario";
  ASSERT_FALSE(GetParam().expectations.empty()) << "a scenario without an expectation";
  for (const fs::path& expectation : GetParam().expectations) {
    const Lines expected = linesOf(expectation);
    const Lines played = play(GetParam().scenario, eventsIn(expectation));
    for (std::size_t i = 0; i < std::min(played.size(), expected.size()); ++i) {
      ASSERT_EQ(played[i], expected[i]) << expectation.filename() << " line " << i + 1;
    }
    ASSERT_EQ(played.size(), expected.size()) << expectation.filename();
  }
}

TEST_P(JourneyTest, PlayedTwiceItIsTheSameByteForByte) {
  const Lines first = play(GetParam().scenario, {});
  EXPECT_GT(first.size(), 1u);
  EXPECT_EQ(first, play(GetParam().scenario, {}));
}

TEST(JourneyFolder, IsNotEmpty) {
  EXPECT_GE(journeys().size(), 10u);
}

void PrintTo(const Journey& journey, std::ostream* out) {
  *out << journey.scenario.filename().string();
}

std::string nameOf(const ::testing::TestParamInfo<Journey>& journey) {
  std::string name = journey.param.scenario.stem().string();
  std::replace(name.begin(), name.end(), '-', '_');
  return name.empty() ? "without_scenario" : name;
}

INSTANTIATE_TEST_SUITE_P(Scenarios, JourneyTest, ::testing::ValuesIn(journeys()), nameOf);

}  // namespace
}  // namespace orlan::simulate
