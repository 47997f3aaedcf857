#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tools/orlan/simulate/ScenarioReader.hpp"

namespace orlan::simulate {
namespace {

Result<Scenario> parse(std::string_view text) {
  return parseScenario(text, ".", "file.json");
}

std::string mistakeIn(std::string_view text) {
  const auto scenario = parse(text);
  return scenario ? "none" : scenario.error().description;
}

/// A scenario with this device, backend, hosts, or these steps.
std::string with(std::string_view member, std::string_view value) {
  return R"({")" + std::string(member) + R"(": )" + std::string(value) +
         (member == "steps" ? "}" : R"(, "steps": []})");
}

TEST(ScenarioReader, AnOrdinaryPhoneNeedsNoWords) {
  const auto scenario = parse(R"({"steps": []})");
  ASSERT_TRUE(scenario);
  EXPECT_EQ(scenario->name, "file.json");
  EXPECT_EQ(isoDateTime(scenario->world.start), "2026-01-01T00:00:00Z");
  EXPECT_EQ(scenario->world.seed, 1u);
  EXPECT_EQ(scenario->until, Duration::zero());
  EXPECT_TRUE(scenario->backend.empty());
  const auto& phone = scenario->phone;
  EXPECT_EQ(phone.device.vendorIdentifier, "00000000-0000-4000-8000-000000000001");
  EXPECT_EQ(phone.device.bundleIdentifier, "com.example.host");
  EXPECT_EQ(phone.application, ApplicationState::active);
  EXPECT_EQ(phone.location.authorization, LocationAuthorization::authorizedAlways);
  EXPECT_EQ(phone.notifications.authorization, NotificationAuthorization::authorized);
}

TEST(ScenarioReader, ReadsTheWholePhone) {
  const auto scenario =
      parse(R"({"name": "n", "start": "2025-03-14T09:26:53.5Z", "seed": -1, "until": 9, "steps": [],
    "device": {"vendorIdentifier": "abcdef00-0000-4000-8000-00000000000f", "bundle": {"identifier": null, "info": {"CFBundleName": 1, "Extra": true}},
      "plist": {"file": 1, "apiKey": "K"}, "locationAuthorization": 4, "locationAuthorizationAfterRequest": 2, "notificationAuthorization": 0,
      "grantNotifications": {"error": "no"}, "notificationFailure": "full", "position": {"latitude": 99, "longitude": -200},
      "regions": "manual", "store": {"s": "t", "b": true, "i": 1, "d": 1.0, "x": {"base64": "AAE="}, "t": {"text": "[]"}}, "files": {"a.txt": "A"}}})");
  ASSERT_TRUE(scenario) << scenario.error().description;
  const auto& phone = scenario->phone;
  EXPECT_EQ(phone.device.vendorIdentifier, "ABCDEF00-0000-4000-8000-00000000000F");
  EXPECT_EQ(phone.device.bundleIdentifier, std::nullopt);
  EXPECT_EQ(json::print(phone.device.info),
            R"({"CFBundleName":1,"CFBundleShortVersionString":"1.0","Extra":true})");
  EXPECT_EQ(json::print(phone.device.propertyLists.at("OrlanConfig")), R"({"file":1,"apiKey":"K"})");
  EXPECT_EQ(phone.location.authorization, LocationAuthorization::authorizedWhenInUse);
  EXPECT_EQ(phone.location.afterRequest, LocationAuthorization::denied);
  EXPECT_EQ(phone.location.regionEvents, phone::RegionEvents::manual);
  EXPECT_EQ(phone.location.position->coordinate, (Coordinate{99, -200}));
  EXPECT_EQ(phone.location.position->horizontalAccuracy, 5.0);
  EXPECT_EQ(phone.notifications.answer.error().description, "no");
  EXPECT_EQ(phone.notifications.refusal->description, "full");
  EXPECT_EQ(json::print(phone.store),
            R"({"s":"t","b":true,"i":1,"d":1.0,"x":{"base64":"AAE="},"t":{"base64":"W10="}})");
  EXPECT_EQ(phone.files.at("a.txt"), "A");
  EXPECT_EQ(scenario->world.start.time_since_epoch() % std::chrono::seconds(1),
            std::chrono::milliseconds(500));
}

TEST(ScenarioReader, AMistakeIsNamedWithItsPlace) {
  struct Row {
    const char* name;
    std::string text;
    const char* mistake;
  };
  const auto step = [](const char* members) {
    return with("steps", R"([{"at": 0, "do": )" + std::string(members) + "}]");
  };
  const auto device = [](const char* members) { return with("device", members); };
  const auto responses = [](const char* list) {
    return with("backend", R"([{"method": "GET", "path": "/x", "responses": )" + std::string(list) + "}]");
  };
  const Row rows[] = {
      {"no object", "[]", "the scenario: expected an object, found an array"},
      {"no steps", "{}", "steps: expected an array, found nothing"},
      {"unknown member", R"({"step": []})", R"(step: unknown key, did you mean "steps"?)"},
      {"start", with("start", R"("2026-02-30T00:00:00Z")"),
       R"(start: expected a date and time in UTC such as "2026-01-01T00:00:00Z", found "2026-02-30T00:00:00Z")"},
      {"seed", with("seed", "1.5"), "seed: expected an integer, found 1.5"},
      {"long value", with("seed", '"' + std::string(500, 'x') + '"'),
       "seed: expected an integer, found \"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx…"},
      {"until", R"({"until": 1, "steps": [{"at": 2, "do": "relaunch"}]})",
       "until: expected the time of the last step (2.0) or later, found 1"},

      {"device member", device(R"({"aplication": "active"})"),
       R"(device.aplication: unknown key, did you mean "application"?)"},
      {"application", device(R"({"application": "asleep"})"),
       R"(device.application: expected "active", "inactive" or "background", found "asleep")"},
      {"authorization", device(R"({"locationAuthorization": 5})"),
       "device.locationAuthorization: expected an integer from 0 to 4, found 5"},
      {"vendor", device(R"({"vendorIdentifier": "1"})"),
       R"(device.vendorIdentifier: expected a UUID or null, found "1")"},
      {"time zone", device(R"({"timeZone": "Mars/Olympus"})"),
       "device.timeZone: this machine has no time zone \"Mars/Olympus\""},
      {"grant", device(R"({"grantNotifications": 1})"),
       R"(device.grantNotifications: expected true, false or {"error": …}, found 1)"},
      {"position", device(R"({"position": {"latitude": 1}})"),
       "device.position.longitude: expected a number, found nothing"},
      {"store", device(R"({"store": {"k": [1]}})"),
       R"(device.store.k: expected a string, a number, true, false, {"base64": …} or {"text": …}, found an array)"},
      {"stored bytes", device(R"({"store": {"k": {"base64": "?"}}})"),
       R"(device.store.k.base64: expected base64 text, found "?")"},
      {"file name", device(R"({"files": {"../x": ""}})"),
       R"(device.files.../x: expected the name of a file, found "../x")"},
      {"property list file", device(R"({"plist": {"file": "no/such.plist"}})"),
       R"(device.plist: cannot read "no/such.plist": No such file or directory)"},

      {"no responses", responses("[]"), "backend[0].responses: expected at least one response"},
      {"two bodies", responses(R"([{"json": null, "text": ""}])"),
       R"(backend[0].responses[0].text: does not go with "json")"},
      {"fault", responses(R"([{}, {"error": "tiemout"}])"),
       R"(backend[0].responses[1].error: expected "timeout", "unreachable", "cancelled" or "notHTTP", found "tiemout")"},
      {"fault with status", responses(R"([{"error": "timeout", "status": 1}])"),
       R"(backend[0].responses[0].status: does not go with "error")"},
      {"delay", responses(R"([{"delay": -1}])"),
       "backend[0].responses[0].delay: expected a time in seconds from 0 on, found -1"},
      {"missing body", responses(R"([{"file": "no.json"}])"),
       R"(backend[0].responses[0].file: cannot read "no.json": No such file or directory)"},

      {"no step", with("steps", R"([1])"), "steps[0]: expected an object, found 1"},
      {"no time", with("steps", R"([{"do": "fix"}])"),
       "steps[0].at: expected a time in seconds from 0 on, found nothing"},
      {"order", with("steps", R"([{"at": 1, "do": "relaunch"}, {"at": 0.5, "do": "relaunch"}])"),
       "steps[1].at: expected 1.0 or later, like the step in front of it, found 0.5"},
      {"unknown step", step(R"("strat")"), R"(steps[0].do: unknown step "strat", did you mean "start"?)"},
      {"latitude", step(R"("fix", "latitude": "abc", "longitude": 1)"),
       R"(steps[0].latitude: expected a number, found "abc")"},
      {"foreign argument", step(R"("relaunch", "token": "1")"),
       R"(steps[0].token: unknown key, did you mean "do"?)"},
      {"bridged segmentations", step(R"("startBridged", "segmentations": "a")"),
       R"(steps[0].segmentations: expected an array or null, found "a")"},
      {"force", step(R"("fetchConfiguration", "forceRefresh": 1)"),
       "steps[0].forceRefresh: expected true or false, found 1"},
      {"half a byte", step(R"("updateAPNsToken", "token": "0aF")"),
       R"(steps[0].token: expected bytes in hexadecimal digits, two a byte, found "0aF")"},
      {"selection", step(R"("submitSurveyResponse", "notificationId": "1", "answers": [
         {"question_id": 1, "type": "SLIDER", "value": "", "choice": [{"choiceId": 1}]}])"),
       R"(steps[0].answers[0].choice[0].choiceId: unknown key, did you mean "choice_id"?)"},
      {"delivered", step(R"("present", "delivered": -1)"),
       "steps[0].delivered: expected the number of a notification, from 0 on, found -1"},
      {"walk without a way", step(R"("track")"),
       R"(steps[0].points: expected the points of a walk, or a "file", found nothing)"},
      {"walk without a speed", step(R"("track", "points": [[1, 2]])"),
       "steps[0].speed: expected a number above 0, as points have no times of their own, found nothing"},
      {"half a point", step(R"("track", "speed": 1, "points": [[1, 2], [1]])"),
       "steps[0].points[1]: expected [latitude, longitude], found an array"},
      {"endless walk", step(R"("track", "speed": 1e-9, "points": [[1, 2], [3, 4]])"),
       "steps[0]: the walk has more than ten million fixes"},
      {"store without a value", step(R"("store", "key": "k")"),
       "steps[0].value: expected a value, or null to remove the key, found nothing"},
      {"only the first mistake", R"({"seed": "x", "steps": [{"at": -1}]})",
       R"(seed: expected an integer, found "x")"},
  };
  for (const Row& row : rows) EXPECT_EQ(mistakeIn(row.text), row.mistake) << row.name;
}

TEST(ScenarioReader, TextThatIsNoJsonIsRefused) {
  for (const char* text : {"", "{", R"({"steps": []} x)", R"({"seed": 1e999, "steps": []})",
                           R"({"seed": 18446744073709551616, "steps": []})", "\xff"}) {
    EXPECT_FALSE(parse(text)) << text;
  }
}

TEST(ScenarioReader, FilesLieBesideTheScenario) {
  const auto directory = std::filesystem::path(::testing::TempDir()) / "orlan-scenario-files";
  std::filesystem::create_directories(directory);
  std::ofstream(directory / "answer.bin") << "answer";
  std::ofstream(directory / "damaged.plist") << "not a property list";
  std::ofstream(directory / "walk.gpx") << R"(<gpx version="1.1"><trk><trkseg>
    <trkpt lat="1" lon="2"><time>2026-01-01T00:00:00Z</time></trkpt>
    <trkpt lat="1" lon="4"><time>2026-01-01T00:00:04Z</time></trkpt></trkseg></trk></gpx>)";
  std::ofstream(directory / "empty.gpx") << R"(<gpx version="1.1"></gpx>)";
  const auto read = [&](std::string_view text) {
    std::ofstream(directory / "scenario.json") << text;
    return readScenario((directory / "scenario.json").string());
  };

  const auto scenario = read(R"({"device": {"plist": {"file": "damaged.plist"}},
    "backend": [{"method": "GET", "path": "/", "responses": [{"file": "answer.bin"}]}],
    "steps": [{"at": 0, "do": "track", "file": "walk.gpx", "interval": 2, "accuracy": 7}]})");
  ASSERT_TRUE(scenario) << scenario.error().description;
  EXPECT_TRUE(scenario->phone.device.propertyLists.empty()) << "what stands in it is the library's affair";
  EXPECT_EQ(scenario->backend[0].answers[0].outcome->body, "answer");
  const auto& walk = std::get<Track>(scenario->steps[0].action);
  ASSERT_EQ(walk.fixes.size(), 3u);
  EXPECT_EQ(walk.fixes[1].coordinate, (Coordinate{1, 3}));
  EXPECT_EQ(walk.fixes[1].accuracy, 7.0);

  const auto empty = read(R"({"steps": [{"at": 0, "do": "track", "file": "empty.gpx"}]})");
  ASSERT_FALSE(empty);
  EXPECT_TRUE(
      empty.error().description.starts_with((directory / "scenario.json").string() + ": steps[0].file: "))
      << empty.error().description;
  const auto missing = readScenario((directory / "no.json").string());
  ASSERT_FALSE(missing);
  EXPECT_EQ(missing.error().description, (directory / "no.json").string() + ": No such file or directory");
}

}  // namespace
}  // namespace orlan::simulate
