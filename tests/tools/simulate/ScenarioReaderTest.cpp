#include <gtest/gtest.h>

#include <fstream>

#include "linux/TemporaryDirectory.hpp"
#include "tools/orlan/simulate/ScenarioReader.hpp"

namespace orlan::simulate {
namespace {

Result<Scenario> parse(std::string_view text) {
  return parseScenario(text, ".", "file.json");
}

TEST(ScenarioReader, ReadsWhatNoScenarioOfTheTestsHas) {
  const auto scenario = parse(R"({"start": "2025-03-14T09:26:53.5Z", "seed": -1, "steps": [],
    "device": {"vendorIdentifier": "abcdef00-0000-4000-8000-00000000000f",
      "bundle": {"identifier": null, "info": {"CFBundleName": 1, "Extra": true}}, "plist": {"file": 1, "apiKey": "K"},
      "grantNotifications": {"error": "no"},
      "store": {"s": "t", "b": true, "i": 1, "d": 1.0, "x": {"base64": "AAE="}, "t": {"text": "[]"}}}})");
  ASSERT_TRUE(scenario) << scenario.error().description;
  EXPECT_EQ(scenario->name, "file.json");
  EXPECT_EQ(seconds(scenario->world.start.time_since_epoch()), 1741944413.5);
  const auto& phone = scenario->phone;
  EXPECT_EQ(phone.device.vendorIdentifier, "ABCDEF00-0000-4000-8000-00000000000F");
  EXPECT_EQ(phone.device.bundleIdentifier, std::nullopt);
  EXPECT_EQ(json::print(phone.device.info),
            R"({"CFBundleName":1,"CFBundleShortVersionString":"1.0","Extra":true})");
  EXPECT_EQ(json::print(phone.device.propertyLists.at("OrlanConfig")), R"({"file":1,"apiKey":"K"})");
  EXPECT_EQ(phone.notifications.answer.error().description, "no");
  EXPECT_FALSE(phone.keepsAppended) << "a log that no step reads would take more memory than all else";
  EXPECT_EQ(json::print(phone.store),
            R"({"s":"t","b":true,"i":1,"d":1.0,"x":{"base64":"AAE="},"t":{"base64":"W10="}})");
}

// What is a mistake at all is compared with the schema (schema/agreement.py); here is how it is told, and
// what no schema can say.
TEST(ScenarioReader, AMistakeIsNamedWithItsPlace) {
  const std::pair<std::string, const char*> rows[] = {
      {"[]", "the scenario: expected an object, found an array"},
      {R"({"steps": [], "start": "2026-02-30T00:00:00Z"})",
       R"(start: expected a date and time in UTC such as "2026-01-01T00:00:00Z", found "2026-02-30T00:00:00Z")"},
      {R"({"steps": [], "seed": ")" + std::string(500, 'x') + "\"}",
       "seed: expected an integer, found \"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx…"},
      {R"({"until": 1, "steps": [{"at": 2, "do": "relaunch"}]})",
       "until: expected the time of the last step (2.0) or later, found 1"},
      {R"({"steps": [], "device": {"application": "asleep"}})",
       R"(device.application: expected "active", "inactive" or "background", found "asleep")"},
      {R"({"steps": [], "device": {"timeZone": "Mars/Olympus"}})",
       "device.timeZone: this machine has no time zone \"Mars/Olympus\""},
      {R"({"steps": [], "device": {"plist": {"file": "no/such.plist"}}})",
       R"(device.plist: cannot read "no/such.plist": No such file or directory)"},
      {R"({"steps": [], "backend": [{"method": "GET", "path": "/x", "responses": [{}, {"json": null, "text": ""}]}]})",
       R"(backend[0].responses[1].text: does not go with "json")"},
      {R"({"steps": [{"at": 1, "do": "relaunch"}, {"at": 0.5, "do": "relaunch"}]})",
       "steps[1].at: expected 1.0 or later, like the step in front of it, found 0.5"},
      {R"({"steps": [{"at": 0, "do": "strat"}]})",
       R"(steps[0].do: unknown step "strat", did you mean "start"?)"},
      {R"({"steps": [{"at": 0, "do": "submitSurveyResponse", "notificationId": "1", "answers": [
         {"question_id": 1, "type": "SLIDER", "value": "", "choice": [{"choiceId": 1}]}]}]})",
       R"(steps[0].answers[0].choice[0].choiceId: unknown key, did you mean "choice_id"?)"},
      {R"({"steps": [{"at": 0, "do": "track"}]})",
       R"(steps[0].points: expected the points of a walk, or a "file", found nothing)"},
      {R"({"steps": [{"at": 0, "do": "track", "speed": 1e-9, "points": [[1, 2], [3, 4]]}]})",
       "steps[0]: the walk has more than ten million fixes"},
      {R"({"seed": "x", "steps": [{"at": -1}]})", R"(seed: expected an integer, found "x")"},  // the first
  };
  for (const auto& [text, mistake] : rows) {
    const auto scenario = parse(text);
    ASSERT_FALSE(scenario) << text;
    EXPECT_EQ(scenario.error().description, mistake);
  }
  EXPECT_FALSE(parse("{"));
}

TEST(ScenarioReader, FilesLieBesideTheScenario) {
  const linuxphone::test::TemporaryDirectory directory;
  const auto file = [&](const char* name, std::string_view content) {
    std::ofstream(directory.file(name)) << content;
    return directory.file(name);
  };
  file("answer.bin", "answer");
  file("damaged.plist", "not a property list");
  file("empty.gpx", R"(<gpx version="1.1"></gpx>)");
  file("walk.gpx", R"(<gpx version="1.1"><trk><trkseg>
    <trkpt lat="1" lon="2"><time>2026-01-01T00:00:00Z</time></trkpt>
    <trkpt lat="1" lon="4"><time>2026-01-01T00:00:04Z</time></trkpt></trkseg></trk></gpx>)");
  const auto read = [&](std::string_view text) { return readScenario(file("scenario.json", text)); };

  const auto scenario = read(R"({"device": {"plist": {"file": "damaged.plist"}},
    "backend": [{"method": "GET", "path": "/", "responses": [{"file": "answer.bin"}]}],
    "steps": [{"at": 0, "do": "track", "file": "walk.gpx", "interval": 2, "accuracy": 7}]})");
  ASSERT_TRUE(scenario) << scenario.error().description;
  EXPECT_TRUE(scenario->phone.device.propertyLists.empty()) << "what stands in it is the library's affair";
  EXPECT_EQ(scenario->backend[0].answers[0].outcome->body, "answer");
  const auto& walk = std::get<Track>(scenario->steps[0].action);
  ASSERT_EQ(walk.size(), 3u);
  EXPECT_EQ(walk.fix(1).coordinate, (Coordinate{1, 3}));
  EXPECT_EQ(walk.fix(1).accuracy, 7.0);

  const auto empty = read(R"({"steps": [{"at": 0, "do": "track", "file": "empty.gpx"}]})");
  ASSERT_FALSE(empty);
  const auto& mistake = empty.error().description;
  EXPECT_TRUE(mistake.starts_with(directory.file("scenario.json") + ": steps[0].file: ")) << mistake;
}

}  // namespace
}  // namespace orlan::simulate
