// The schema that the program prints and the readers that it has know the same scenarios.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>

#include "tools/orlan/simulate/Player.hpp"
#include "tools/orlan/simulate/ScenarioReader.hpp"
#include "tools/orlan/simulate/keys.hpp"
#include "tools/orlan/simulate/schema.hpp"
#include "tools/orlan/simulate/stepTable.hpp"
#include "tools/simulate/SchemaCheck.hpp"

namespace orlan::simulate {
namespace {

namespace fs = std::filesystem;
using json::Value;
using Names = std::set<std::string, std::less<>>;

const fs::path folder = fs::path(ORLAN_SOURCE_DIR) / "tests" / "scenarios";

const Value& schema() {
  static const Value value = *json::parse(scenarioSchema());
  return value;
}

const Value& definition(const char* name) {
  return SchemaCheck(schema()).resolved(json::Object{{"$ref", std::string("#/$defs/") + name}});
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

bool readerAccepts(const std::string& text) {
  return parseScenario(text, folder.string(), "scenario").has_value();
}

bool schemaAccepts(const std::string& text) {
  return SchemaCheck(schema()).accepts(*json::parse(text));
}

/// The schemas of all steps.
std::vector<const Value*> steps() {
  const SchemaCheck check(schema());
  std::vector<const Value*> all;
  const Value& items = *propertiesOf(schema()).find("steps")->object()->find("items");
  for (const Value& step : *items.object()->find("oneOf")->array()) all.push_back(&check.resolved(step));
  return all;
}

TEST(Schema, IsTheOneInTheDocumentation) {
  EXPECT_EQ(scenarioSchema(), fileText(fs::path(ORLAN_SOURCE_DIR) / "docs" / "scenario.schema.json"));
}

TEST(Schema, AcceptsOurScenarios) {
  std::size_t scenarios = 0;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() != ".json") continue;
    EXPECT_TRUE(schemaAccepts(fileText(entry.path()))) << entry.path();
    ++scenarios;
  }
  EXPECT_GT(scenarios, 0U);
}

TEST(Schema, AcceptsTheFirstScenarioOfTheDocumentation) {
  const std::string page = fileText(fs::path(ORLAN_SOURCE_DIR) / "docs" / "scenario-format.md");
  const std::string_view fence = "```json\n";
  const auto begin = page.find(fence) + fence.size();
  const std::string first = page.substr(begin, page.find("```", begin) - begin);
  EXPECT_TRUE(schemaAccepts(first)) << first;
  const auto scenario = parseScenario(first, "", "");
  ASSERT_TRUE(scenario) << scenario.error().description;
  Player player(*scenario, [](std::string_view) {}, {});
  player.play();
  EXPECT_EQ(player.mistake(), std::nullopt);
}

TEST(Schema, EverythingIsDocumented) {
  const std::string page = fileText(fs::path(ORLAN_SOURCE_DIR) / "docs" / "scenario-format.md");
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

using Visit = std::function<void(const Value&)>;

/// Every value that comes of `value` by one slip: a part of it left out, replaced by something odd, or with a
/// member too many.
void eachSlip(const Value& value, const Visit& visit) {
  static const json::Array odd = {nullptr, true, -1, 0, 3, 1.5, 3.0, "", "x", json::Array(), json::Object()};
  for (const Value& other : odd) visit(other);
  if (const json::Object* object = value.object()) {
    json::Object more = *object;
    more.set("surplus", 1);
    visit(more);
    for (const auto& [name, member] : *object) {
      json::Object less = *object;
      less.remove(name);
      visit(less);
      eachSlip(member, [&, key = name](const Value& slip) {
        json::Object changed = *object;
        changed.set(key, slip);
        visit(changed);
      });
    }
  }
  if (const json::Array* array = value.array()) {
    for (std::size_t i = 0; i < array->size(); ++i) {
      eachSlip((*array)[i], [&](const Value& slip) {
        json::Array changed = *array;
        changed[i] = slip;
        visit(changed);
      });
    }
  }
}

/// Schema and readers take each example of `part` and agree about all slips. `wrap`: the scenario around it.
void expectAgreement(const Value& part, const std::function<Value(const Value&)>& wrap) {
  const Value* examples = part.object()->find("examples");
  ASSERT_NE(examples, nullptr) << json::print(part);
  for (const Value& example : *examples->array()) {
    const std::string good = json::print(wrap(example));
    EXPECT_TRUE(readerAccepts(good)) << good;
    EXPECT_TRUE(schemaAccepts(good)) << good;
    std::size_t refused = 0;
    eachSlip(example, [&](const Value& slip) {
      const std::string text = json::print(wrap(slip));
      const bool isTaken = readerAccepts(text);
      refused += isTaken ? 0 : 1;
      EXPECT_EQ(schemaAccepts(text), isTaken) << text;
    });
    EXPECT_GT(refused, 0U) << good;
  }
}

TEST(Schema, AgreesWithTheReadersAboutSteps) {
  for (const Value* step : steps()) {
    expectAgreement(*step, [](const Value& value) { return json::Object{{"steps", json::Array{value}}}; });
  }
}

TEST(Schema, AgreesWithTheReadersAboutThePhone) {
  expectAgreement(definition("device"), [](const Value& device) {
    return json::Object{{"device", device}, {"steps", json::Array()}};
  });
}

TEST(Schema, AgreesWithTheReadersAboutTheBackend) {
  const auto backend = [](const Value& route) {
    return json::Object{{"backend", json::Array{route}}, {"steps", json::Array()}};
  };
  expectAgreement(definition("route"), backend);
  expectAgreement(definition("response"), [&](const Value& response) {
    return backend(json::Object{{"method", "GET"}, {"path", "/"}, {"responses", json::Array{response}}});
  });
}

TEST(Schema, AgreesWithTheReadersAboutTheRest) {
  struct Row {
    const char* text;
    bool isValid;
  };
  const Row rows[] = {
      {R"([])", false},
      {R"({})", false},
      {R"({"steps": [], "step": 1})", false},
      {R"({"steps": [], "name": "", "seed": -9223372036854775808, "until": 0.5})", true},
      {R"({"steps": [], "name": 1})", false},
      {R"({"steps": [], "seed": 1.5})", false},
      {R"({"steps": [], "until": -1})", false},
      {R"({"steps": [], "until": 1e12})", false},
      {R"({"steps": [], "start": "2026-01-01T00:00:00.25Z"})", true},
      {R"({"steps": [], "start": "2026-01-01T00:00:00"})", false},
      {R"({"steps": [], "start": "2026-01-01T00:00:00+01:00"})", false},
      {R"({"steps": [], "hosts": {"platform": {"nightly": "https://n.example"}, "transmission": {}}})", true},
      {R"({"steps": [], "hosts": {"platform": {"nightly": 1}}})", false},
      {R"({"steps": [], "hosts": {"platform": {"test": "https://t.example"}}})", false},
      {R"({"steps": [], "hosts": {"plattform": {}}})", false},
      {R"({"steps": [], "device": {"files": {"..": ""}}})", false},
      {R"({"steps": [], "device": {"files": {"a/b": ""}}})", false},
      {R"({"steps": [], "device": {"files": {"..a": ""}}})", true},
      {R"({"steps": [{"at": 0, "do": "fix", "fixes": [], "latitude": 1}]})", false},
      {R"({"steps": [{"at": 0, "do": "track", "points": [[1, 2]], "speed": 1, "file": "x.gpx"}]})", false},
      {R"({"steps": [{"at": 0, "do": "track", "points": [[1, 2]]}]})", false},
      {R"({"steps": [{"at": 0, "do": "application", "to": "active", "signal": "didBecomeActive"}]})", false},
      {R"({"steps": [{"at": 0, "do": "start", "apiKey": "K", "appId": "A"}]})", false},
      {R"({"steps": [{"at": 0, "do": "tap", "delivered": 0, "badge": 1}]})", false},
      {R"({"steps": [{"at": 0, "do": "tap", "delivered": 0, "actionIdentifier": "a"}]})", true},
      {R"({"steps": [{"at": 0, "do": "store", "key": "k", "value": {"text": "", "base64": ""}}]})", false},
      {R"({"steps": [{"at": 0, "do": "store", "key": "k", "value": {"base64": "AA"}}]})", false},
      {R"({"steps": [{"at": 1e11, "do": "clearLogs"}]})", true},
      {R"({"steps": [{"at": 1e12, "do": "clearLogs"}]})", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(readerAccepts(row.text), row.isValid) << row.text;
    EXPECT_EQ(schemaAccepts(row.text), row.isValid) << row.text;
  }
}

}  // namespace
}  // namespace orlan::simulate
