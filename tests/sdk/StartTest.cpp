#include <gmock/gmock.h>

#include "orlan/sdk/OrlanPlugin.hpp"
#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;
using test::SimulatedHost;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string reported = "request POST https://platform.staging.orlan.example/api/plugin-activity/create";

TEST(Start, WhileInactiveOnlyTheBackgroundMonitorIsInCharge) {
  SimulatedHost host({.application = ApplicationState::inactive});
  host.start();
  EXPECT_THAT(host.seen.after("log • 📱 "),
              ElementsAre("Initial app state check: BACKGROUND", "BG monitor active (app in background)",
                          "Skipping FG monitor start (app in background)", "Initial app state: INACTIVE"));
  EXPECT_FALSE(host.seen.has("updates foreground on 10.0 10.0"));
  EXPECT_EQ(host.services().foregroundMonitor.ifBuilt(), nullptr);
}

TEST(Start, ALaterStartTakesThePlaceOfOneThatIsStillRegistering) {
  SimulatedHost host;
  const auto late = sim::HttpAnswer::reply(200, R"({"data":{"device_id":"LATE","orlan_id":"LATE"}})");
  const auto next = sim::HttpAnswer::reply(200, R"({"data":{"device_id":"D2","orlan_id":"O2"}})");
  host.phone.http().forget("POST", "/api/device-registerd/create");
  host.phone.http().answer("POST", "/api/device-registerd/create",
                           {sim::HttpAnswer(late).after(500ms), next});
  host.plugin().start("FIRST", Config::Environment::staging, {}, host.delegate);
  host.plugin().start("SECOND", Config::Environment::staging, {}, host.delegate);
  host.world.runFor(1s);
  EXPECT_THAT(host.seen.after("delegate "), ElementsAre("didAuthenticate D2 O2"));
  EXPECT_THAT(host.seen.after("log INFO I'm here"), ElementsAre(" and this is the API key - SECOND"));
  EXPECT_EQ(host.phone.store().string("Orlan.DeviceID"), "D2");
  EXPECT_EQ(host.phone.store().string("Orlan.APIKey"), "SECOND");
  // Both status streams were subscribed twice and are heard once.
  EXPECT_THAT(host.seen.after("log • Push status"), ElementsAre(" = 0", " = 0", " = 2", " = 2"));
}

/// Does something the first time that it hears of a success.
struct ActingDelegate final : OrlanPluginDelegate {
  void didAuthenticate(OrlanPlugin&, const std::string&, const std::string&) override {
    if (act) std::exchange(act, nullptr)();
  }
  std::function<void()> act;
};

TEST(Start, OneThatIsReplacedOrEndedFromInsideDoesNothingFurther) {
  enum Place { delegate, locationStatus, identity };
  for (const bool known : {true, false}) {
    for (const Place place : {delegate, locationStatus, identity}) {
      if (place == identity && !known) continue;  // is told on another queue then
      for (const bool ends : {true, false}) {
        SCOPED_TRACE(testing::Message() << place << known << ends);
        SimulatedHost host;
        if (known) {
          host.start();
          host.relaunch();
        }
        host.seen.lines.clear();
        const auto acting = std::make_shared<ActingDelegate>();
        std::size_t seenAtTheEnd = 0;
        acting->act = [&] {
          if (!ends) return host.plugin().start("KEY", Config::Environment::staging, {}, acting);
          host.quit();
          seenAtTheEnd = host.seen.lines.size();
        };
        bool isArmed = false;
        const auto now = [&](const auto&) {
          if (std::exchange(isArmed, false)) std::exchange(acting->act, nullptr)();
        };
        SubscriptionBag listening;
        if (place == locationStatus) {
          listening.add(host.services().locationPermission->statusPublisher().subscribe(now));
        } else if (place == identity) {
          listening.add(host.services().api->authPublisher().subscribe(now));
        }
        isArmed = place != delegate;
        const auto listener = isArmed ? std::make_shared<ActingDelegate>() : acting;
        host.plugin().start("KEY", Config::Environment::staging, {}, listener);
        host.world.runFor(1s);
        if (ends) {
          EXPECT_EQ(host.seen.lines.size(), seenAtTheEnd) << host.seen.lines.back();
        } else {
          EXPECT_THAT(host.seen.lines, Contains(reported).Times(1));
          EXPECT_THAT(host.seen.lines, Contains("log • Push status = 0").Times(1));
        }
      }
    }
  }
}

TEST(Start, ALaterStartReplacesTheObservers) {
  SimulatedHost host;
  host.start();
  host.start();
  host.phone.application().moveTo(ApplicationState::background);
  EXPECT_THAT(host.seen.after("log • 📱 Transition "), ElementsAre("#1: ACTIVE → BACKGROUND"));
}

TEST(Start, AFailedRegistrationLeavesOnlyTheStartItself) {
  SimulatedHost host;
  host.answerRegistration(sim::HttpAnswer::unreachable());
  host.start();
  ASSERT_EQ(host.delegate->errors.size(), 1u);
  EXPECT_TRUE(host.seen.has("log ERROR Auth failed: " + host.delegate->errors[0].description));
  EXPECT_EQ(host.plugin().storedApiKey(), "KEY");
  EXPECT_EQ(host.services().geofence.ifBuilt(), nullptr);
  EXPECT_EQ(host.services().backgroundMonitor.ifBuilt(), nullptr);
  EXPECT_EQ(host.services().foregroundMonitor.ifBuilt(), nullptr);
  const auto before = host.seen.lines.size();
  host.phone.application().moveTo(ApplicationState::inactive);
  EXPECT_EQ(host.seen.lines.size(), before) << "nobody observes the application";
}

TEST(Start, ARefusedOneChangesNothing) {
  SimulatedHost host;
  host.plugin().start(Config::Environment::production, {}, host.delegate);
  host.plugin().start("K", "A", "AK", "com.other", Config::Environment::production, {}, true, host.delegate);
  EXPECT_EQ(host.delegate->errors.at(0),
            (Error{"OrlanPlugin", -1, "OrlanConfig.plist is required and must include company_api_key."}));
  EXPECT_EQ(host.delegate->errors.size(), 2u);
  EXPECT_EQ(host.plugin().storedEnv(), Config::Environment::staging);
  EXPECT_EQ(host.services().api.ifBuilt(), nullptr);
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
