#include <gmock/gmock.h>

#include "orlan/sdk/OrlanPlugin.hpp"
#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;
using test::SimulatedHost;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

using Lines = std::vector<std::string>;

const std::string registrationUrl = "https://platform.staging.orlan.example/api/device-registerd/create";
const std::string reportUrl = "https://platform.staging.orlan.example/api/plugin-activity/create";

// What follows a registration, for an application in front on a phone that has no position yet.
const Lines inFront = {
    "log INFO Auth OK • deviceID=D1",
    "delegate didAuthenticate D1 O1",
    "log • 📱 Initial app state check: FOREGROUND",
    "log • ⏸️  BG-Monitor paused (foreground mode)",
    "log • 📱 Pre-paused BG monitor (app in foreground)",
    "log INFO I'm here and this is the API key - KEY",
    "log ERROR Geofence fetch (start): no CLLocation yet",
    "log • 📱 Starting FG monitor (app in foreground)",
    "updates foreground on 10.0 10.0",
    "log • 🟢 FG-Monitor started (live GPS)",
    "log • 🟢 Calling reportPluginStarted",
    "log • 🟢 inside reportPluginStarted",
    "log • Preparing to create plugin activity",
    "log • Calling the API with body: "
    "device_registered_id=00000000-0000-4000-8000-000000000001&time=2026-01-01 "
    "00:00:00&activity=plugin_started",
    "log • Calling the API : " + reportUrl,
    "log • Calling the API with apiKey: KEY",
    "request POST " + reportUrl,
    "log • 🔧 Setting up app state monitoring",
    "log • 📱 Initial app state: ACTIVE",
    "log • 🔧 App state monitoring configured - tracking 4 state events",
};

// How the permissions come in on the main loop's next turns.
const Lines permissionsArrive = {
    "updates permission on 10.0 10.0",
    "log • Location status = 3",
    "log • Push status = 2",
};

Lines joined(std::initializer_list<Lines> parts) {
  Lines all;
  for (const Lines& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

TEST(Start, AFreshDeviceRegistersAndThenComesUp) {
  SimulatedHost host;
  host.start();
  EXPECT_THAT(host.seen.lines,
              ElementsAreArray(joined({{
                                           "store Orlan.Environment.v1 = \"staging\"",
                                           "file orlan-sdk.log",
                                           "log INFO ┌─🔒  Registering device",
                                           "request POST " + registrationUrl,
                                           "log • Location status = 3",
                                           "log • Push status = 0",
                                       },
                                       permissionsArrive,
                                       {
                                           "log INFO ┌─📬  HTTP 200",
                                           "store Orlan.DeviceID = \"D1\"",
                                           "store Orlan.OrlanID = \"O1\"",
                                           "store Orlan.APIKey = \"KEY\"",
                                           "store Orlan.DeviceRegistered.v1 = true",
                                           "store Orlan.Segments = \"\"",
                                           "store Orlan.LastSyncedDeviceToken.v1 = \"pending\"",
                                           "log INFO ✅ Device Registered OK",
                                       },
                                       inFront,
                                       {"log • Received response: ok"}})));
}

TEST(Start, ARegisteredDeviceComesUpInsideTheCall) {
  SimulatedHost host;
  host.start();
  host.relaunch();
  host.seen.lines.clear();
  host.phone.clock().set(sim::WorldSettings{}.start);
  host.plugin().start("KEY", Config::Environment::staging, {}, host.delegate);
  EXPECT_THAT(host.seen.lines,
              ElementsAreArray(joined({{"store Orlan.Environment.v1 = \"staging\""},
                                       inFront,
                                       {"log • Location status = 3", "log • Push status = 0"}})));
}

TEST(Start, InTheBackgroundOnlyTheBackgroundMonitorIsInCharge) {
  for (const auto state : {ApplicationState::background, ApplicationState::inactive}) {
    SimulatedHost host({.application = state});
    host.start();
    EXPECT_THAT(host.seen.after("log • 📱 "),
                ElementsAre("Initial app state check: BACKGROUND", "BG monitor active (app in background)",
                            "Skipping FG monitor start (app in background)",
                            state == ApplicationState::inactive ? "Initial app state: INACTIVE"
                                                                : "Initial app state: BACKGROUND"));
    EXPECT_FALSE(host.seen.has("updates foreground on 10.0 10.0"));
    EXPECT_EQ(host.services().foregroundMonitor.ifBuilt(), nullptr);
  }
}

TEST(Start, ALaterStartTakesThePlaceOfOneThatIsStillRegistering) {
  SimulatedHost host;
  host.plugin().start("FIRST", Config::Environment::staging, {}, host.delegate);
  host.plugin().start("SECOND", Config::Environment::staging, {}, host.delegate);
  host.world.runFor(1s);
  EXPECT_THAT(host.seen.after("delegate "), ElementsAre("didAuthenticate D1 O1"));
  EXPECT_THAT(host.seen.after("log INFO I'm here"), ElementsAre(" and this is the API key - SECOND"));
  // Both status streams were subscribed twice and are heard once.
  EXPECT_THAT(host.seen.after("log • Push status"), ElementsAre(" = 0", " = 0", " = 2", " = 2"));
}

TEST(Start, ALaterStartReplacesTheObservers) {
  SimulatedHost host;
  host.start();
  host.start();
  host.phone.application().moveTo(ApplicationState::background);
  EXPECT_THAT(host.seen.after("log • 📱 Transition "), ElementsAre("#1: ACTIVE → BACKGROUND"));
}

TEST(Start, AnotherKeyForgetsWhoTheDeviceWas) {
  SimulatedHost host;
  host.start("OLD");
  host.seen.lines.clear();
  host.start("NEW");
  EXPECT_THAT(host.seen.after("store ").front(), "Orlan.DeviceID removed");
  EXPECT_THAT(host.seen.after("log WARN "),
              ElementsAre("• Cleared cached Orlan credentials (old key OLD ≠ new key NEW)"));
  EXPECT_EQ(host.phone.store().string("Orlan.APIKey"), "NEW");
}

TEST(Start, AFailedRegistrationLeavesOnlyTheStartItself) {
  struct Row {
    const char* name;
    sim::HttpAnswer answer;
    const char* words;
  };
  const Row rows[] = {
      {"no network", sim::HttpAnswer::unreachable(), nullptr},
      {"refused", sim::HttpAnswer::reply(500, "no"), nullptr},
      {"not the answer", sim::HttpAnswer::reply(200, "[]"), nullptr},
  };
  for (const Row& row : rows) {
    SimulatedHost host;
    host.answerRegistration(row.answer);
    host.start();
    ASSERT_EQ(host.delegate->errors.size(), 1u) << row.name;
    EXPECT_TRUE(host.seen.has("log ERROR Auth failed: " + host.delegate->errors[0].description)) << row.name;
    EXPECT_EQ(host.plugin().storedApiKey(), "KEY") << row.name;
    EXPECT_EQ(host.services().geofence.ifBuilt(), nullptr) << row.name;
    EXPECT_EQ(host.services().backgroundMonitor.ifBuilt(), nullptr) << row.name;
    EXPECT_EQ(host.services().foregroundMonitor.ifBuilt(), nullptr) << row.name;
    const auto before = host.seen.lines.size();
    host.phone.application().moveTo(ApplicationState::inactive);
    EXPECT_EQ(host.seen.lines.size(), before) << row.name << ": nobody observes the application";
  }
}

TEST(Start, WithoutHostCredentialsNothingChanges) {
  SimulatedHost host;
  host.plugin().start(Config::Environment::production, {}, host.delegate);
  host.world.runFor(1s);
  EXPECT_THAT(
      host.seen.lines,
      ElementsAre("file orlan-sdk.log",
                  "log ERROR OrlanConfig.plist is required and must include company_api_key.",
                  "delegate didFailWith OrlanConfig.plist is required and must include company_api_key."));
  EXPECT_EQ(host.delegate->errors[0].domain, "OrlanPlugin");
  EXPECT_EQ(host.delegate->errors[0].code, -1);
  EXPECT_EQ(host.plugin().storedEnv(), Config::Environment::staging);
  EXPECT_EQ(host.services().api.ifBuilt(), nullptr);
}

TEST(Start, AForeignBundleIsRefusedBeforeAnythingElse) {
  SimulatedHost host;
  host.plugin().start("K", "A", "AK", "com.other", Config::Environment::production, {}, true, host.delegate);
  const std::string words =
      "OrlanConfig ios_bundle_id mismatch. Configured=com.other, Actual=com.example.host.";
  EXPECT_THAT(host.seen.lines,
              ElementsAre("file orlan-sdk.log", "log ERROR " + words, "delegate didFailWith " + words));
  // The credentials were only for that start.
  host.start("PLAIN");
  EXPECT_EQ(host.services().api->transmissionAuthConfig(), std::nullopt);
  EXPECT_EQ(host.plugin().storedApiKey(), "PLAIN");
}

TEST(Start, NobodyNeedsToListen) {
  SimulatedHost host;
  host.plugin().start(Config::Environment::staging, {}, {});
  host.plugin().start("KEY", Config::Environment::staging, {}, host.delegate);
  host.delegate.reset();
  host.world.runFor(1s);
  EXPECT_TRUE(host.seen.has("log INFO Auth OK • deviceID=D1"));
  EXPECT_THAT(host.seen.after("delegate "), IsEmpty());
}

// Where the key and the credentials come from.
TEST(Start, CredentialsInThePropertyListWinOverTheArgument) {
  const json::Object list{
      {"company_api_key", " B "}, {"app_id", "A"}, {"include_legacy_api_key_header", "No"}};
  sim::PhoneSettings settings;
  settings.device.propertyLists.emplace("OrlanConfig", list);
  for (const bool named : {true, false}) {
    SimulatedHost host(settings);
    if (named) {
      host.plugin().start("A", Config::Environment::nightly, {"x", "y"}, host.delegate);
    } else {
      host.plugin().start(Config::Environment::nightly, {"x", "y"}, host.delegate);
    }
    EXPECT_EQ(host.plugin().storedApiKey(), "B");
    EXPECT_EQ(host.plugin().storedEnv(), Config::Environment::nightly);
    EXPECT_EQ(host.services().api->env(), Config::Environment::nightly);
    const auto credentials = host.services().api->transmissionAuthConfig();
    ASSERT_TRUE(credentials);
    EXPECT_EQ(credentials->appID, "A");
    EXPECT_EQ(credentials->iosBundleID, "com.example.host");
    EXPECT_FALSE(credentials->includeLegacyApiKeyHeader);
    EXPECT_EQ(host.phone.store().string("Orlan.Environment.v1"), "nightly");
    EXPECT_NE(host.seen.requests.at(0).body->find(R"("segmentations":"x,y")"), std::string::npos);
  }
}

TEST(Start, BridgedArgumentsAreReadByTheirMeaning) {
  struct Row {
    std::int64_t environment;
    json::Value tags;
    Config::Environment expected;
    const char* segmentations;
  };
  using Environment = Config::Environment;
  const Row rows[] = {
      {0, json::Array{"a", "b"}, Environment::development, R"("segmentations":"a,b")"},
      {1, nullptr, Environment::staging, R"("segmentations":"")"},
      {2, json::Array{"a", 1}, Environment::production, R"("segmentations":"")"},
      {3, "a", Environment::nightly, R"("segmentations":"")"},
      {9, json::Array{}, Environment::staging, R"("segmentations":"")"},
      {-1, json::Array{""}, Environment::staging, R"("segmentations":"")"},
  };
  for (const Row& row : rows) {
    SimulatedHost host;
    host.plugin().startBridged("KEY", row.environment, row.tags, host.delegate);
    EXPECT_EQ(host.plugin().storedEnv(), row.expected) << row.environment;
    EXPECT_NE(host.seen.requests.at(0).body->find(row.segmentations), std::string::npos) << row.environment;
  }
}

TEST(Start, TheBridgedAppScopedStartAlwaysSendsTheLegacyHeader) {
  SimulatedHost host;
  host.plugin().startBridged("K", "A", "AK", "com.example.host", 1, nullptr, host.delegate);
  const auto credentials = host.services().api->transmissionAuthConfig();
  ASSERT_TRUE(credentials);
  EXPECT_TRUE(credentials->isComplete());
  EXPECT_TRUE(credentials->includeLegacyApiKeyHeader);
}

}  // namespace
}  // namespace orlan
