#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "orlan/base/text.hpp"
#include "tools/orlan/simulate/Player.hpp"
#include "tools/orlan/simulate/ScenarioReader.hpp"

namespace orlan::simulate {
namespace {

namespace fs = std::filesystem;

using Lines = std::vector<std::string>;
using Events = std::set<std::string, std::less<>>;

const fs::path folder = fs::path(ORLAN_SOURCE_DIR) / "tests" / "scenarios";
constexpr std::string_view suffix = ".expected.jsonl";

std::vector<std::string> expectations() {
  std::vector<std::string> files;
  for (const auto& entry : fs::directory_iterator(folder)) {
    files.push_back(entry.path().filename().string());
  }
  std::erase_if(files, [](const std::string& file) { return !file.ends_with(suffix); });
  return files;
}

std::string scenarioOf(const std::string& expectation) {
  return expectation.substr(0, expectation.find('.'));
}

/// "walk.log+request.expected.jsonl": log and request; "walk.expected.jsonl": everything.
Events eventsOf(std::string expectation) {
  expectation.resize(expectation.size() - suffix.size());
  const auto parts = text::split(expectation, '.');
  const auto events = text::split(parts.size() > 1 ? parts[1] : "", '+');
  return {events.begin(), events.end()};
}

Lines play(const std::string& expectation, Events only) {
  const auto scenario = readScenario((folder / (scenarioOf(expectation) + ".json")).string());
  if (!scenario) return {scenario.error().description};
  Lines lines;
  Player player(
      *scenario, [&](std::string_view line) { lines.emplace_back(line); }, std::move(only));
  player.play();
  return lines;
}

class JourneyTest : public ::testing::TestWithParam<std::string> {};

TEST_P(JourneyTest, TheOutsideWorldSeesWhatIsExpected) {
  const Lines played = play(GetParam(), eventsOf(GetParam()));
  std::ifstream file(folder / GetParam(), std::ios::binary);
  std::size_t number = 0;
  for (std::string line; std::getline(file, line); ++number) {
    ASSERT_LT(number, played.size());
    ASSERT_EQ(played[number], line + "\n") << "line " << number + 1;
  }
  EXPECT_EQ(played.size(), number);
}

TEST_P(JourneyTest, PlayedTwiceItIsTheSameByteForByte) {
  const Lines first = play(GetParam(), {});
  EXPECT_GT(first.size(), 1u);
  EXPECT_EQ(first, play(GetParam(), {}));
}

TEST(JourneyFolder, ExpectsSomethingOfEveryScenario) {
  std::set<std::string> expected;
  for (const auto& file : expectations()) expected.insert(scenarioOf(file));
  EXPECT_GE(expected.size(), 10u);
  for (const auto& entry : fs::directory_iterator(folder)) {
    const auto& file = entry.path();
    EXPECT_TRUE(file.extension() != ".json" || expected.contains(file.stem().string())) << file.string();
  }
}

std::string nameOf(const ::testing::TestParamInfo<std::string>& expectation) {
  std::string name = scenarioOf(expectation.param);
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Scenarios, JourneyTest, ::testing::ValuesIn(expectations()), nameOf);

}  // namespace
}  // namespace orlan::simulate
