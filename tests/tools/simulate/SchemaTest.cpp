// The schema that the program prints, its readers and the guide name the same things. What they take is
// compared by schema/agreement.py.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include "tools/orlan/simulate/Player.hpp"
#include "tools/orlan/simulate/ScenarioReader.hpp"
#include "tools/orlan/simulate/keys.hpp"
#include "tools/orlan/simulate/schema.hpp"
#include "tools/orlan/simulate/stepTable.hpp"

namespace orlan::simulate {
namespace {

namespace fs = std::filesystem;
using json::Value;
using Names = std::set<std::string, std::less<>>;

const fs::path docs = fs::path(ORLAN_SOURCE_DIR) / "docs";

const Value& schema() {
  static const Value value = *json::parse(scenarioSchema());
  return value;
}

const Value& definition(std::string_view name) {
  return *schema().object()->find("$defs")->object()->find(name);
}

const json::Object& propertiesOf(const Value& object) {
  return *object.object()->find("properties")->object();
}

Names namesIn(const json::Object& object) {
  Names names;
  for (const auto& [name, value] : object) names.insert(name);
  return names;
}

std::string fileText(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The schemas of all steps.
std::vector<const Value*> steps() {
  std::vector<const Value*> all;
  const Value& items = *propertiesOf(schema()).find("steps")->object()->find("items");
  for (const Value& step : *items.object()->find("oneOf")->array()) {
    const std::string& reference = *step.object()->find("$ref")->string();
    all.push_back(&definition(reference.substr(reference.rfind('/') + 1)));
  }
  return all;
}

TEST(Schema, IsTheOneInTheDocumentation) {
  EXPECT_EQ(scenarioSchema(), fileText(docs / "scenario.schema.json"));
}

TEST(Schema, TheFirstScenarioOfTheDocumentationIsPlayed) {
  const std::string page = fileText(docs / "scenario-format.md");
  const std::string_view fence = "```json\n";
  const auto begin = page.find(fence) + fence.size();
  const auto scenario = parseScenario(page.substr(begin, page.find("```", begin) - begin), "", "");
  ASSERT_TRUE(scenario) << scenario.error().description;
  Player player(*scenario, [](std::string_view) {}, {});
  player.play();
  EXPECT_EQ(player.mistake(), std::nullopt);
}

TEST(Schema, EverythingIsDocumented) {
  const std::string page = fileText(docs / "scenario-format.md");
  const auto expectNamed = [&](std::string_view name) {
    const std::string text(name);
    EXPECT_TRUE(page.find('`' + text + '`') != std::string::npos ||
                page.find('"' + text + '"') != std::string::npos)
        << name;
  };
  for (const auto event : Transcript::eventNames()) expectNamed(event);
  for (const auto key : keys::scenario) expectNamed(key);
  for (const auto key : keys::device) expectNamed(key);
  for (const auto key : keys::response) expectNamed(key);
  for (const StepKind& kind : stepKinds()) {
    expectNamed(kind.name);
    for (const auto argument : kind.arguments) expectNamed(argument);
  }
}

TEST(Schema, HasTheMembersThatTheReadersKnow) {
  const auto expectMembers = [](const Value& part, const auto& known, const char* name) {
    EXPECT_EQ(namesIn(propertiesOf(part)), Names(known.begin(), known.end())) << name;
  };
  expectMembers(schema(), keys::scenario, "scenario");
  expectMembers(*propertiesOf(schema()).find("hosts"), keys::hosts, "hosts");
  expectMembers(definition("device"), keys::device, "device");
  expectMembers(definition("bundle"), keys::bundle, "bundle");
  expectMembers(definition("route"), keys::route, "route");
  expectMembers(definition("response"), keys::response, "response");
  expectMembers(definition("fix"), keys::fix, "fix");
  expectMembers(definition("answer"), keys::answer, "answer");
  expectMembers(definition("selection"), keys::selection, "selection");
}

TEST(Schema, HasTheStepsOfTheTableWithTheirArguments) {
  std::map<std::string, Names, std::less<>> inSchema, inTable;
  for (const Value* step : steps()) {
    Names arguments = namesIn(propertiesOf(*step));
    arguments.erase("at");
    arguments.erase("do");
    const json::Object& call = *propertiesOf(*step).find("do")->object();
    const Value* names = call.find("enum");
    for (const Value& name : names == nullptr ? json::Array{*call.find("const")} : *names->array()) {
      EXPECT_TRUE(inSchema.emplace(*name.string(), arguments).second) << *name.string();
    }
  }
  for (const StepKind& kind : stepKinds()) {
    const Names arguments(kind.arguments.begin(), kind.arguments.end());
    EXPECT_TRUE(inTable.emplace(kind.name, arguments).second) << kind.name;
  }
  EXPECT_EQ(inSchema, inTable);
}

}  // namespace
}  // namespace orlan::simulate
