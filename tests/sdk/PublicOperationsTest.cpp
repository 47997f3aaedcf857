#include <gmock/gmock.h>

#include "orlan/base/Bytes.hpp"
#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;
using sim::HttpAnswer;
using test::SimulatedHost;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Lines = std::vector<std::string>;

const Error notStarted{"OrlanPlugin", -1, "SDK not initialized. Call start() first."};
constexpr char configPath[] = "/api/get-config";
constexpr char configBody[] =
    R"({"configuration":{"notificationsCount":2,"daysCount":3,"batteryCount":4,"privacyText":"Mind this"}})";

/// A started host whose answers so far are forgotten.
struct StartedHost : SimulatedHost {
  StartedHost() {
    start();
    seen.lines.clear();
    seen.requests.clear();
  }
  void configuration(HttpAnswer answer) { phone.http().answer("GET", configPath, {std::move(answer)}); }
  void segments(HttpAnswer answer) { phone.http().answer("POST", "/api/segments", {std::move(answer)}); }

  /// What the log says about an outcome, after everything has arrived.
  Lines told(std::string_view beginning) {
    world.runFor(61s);
    return seen.after(beginning);
  }
};

TEST(PublicOperations, WhatNeedsAStartIsRefusedBeforeIt) {
  SimulatedHost host;
  std::vector<Error> errors;
  host.plugin().updateSegments({"a"}, [&](const auto& result) { errors.push_back(result.error()); });
  host.plugin().fetchConfiguration(false, [&](const auto& result) { errors.push_back(result.error()); });
  host.plugin().refreshPrivacyText([&](const auto& result) { errors.push_back(result.error()); });
  EXPECT_THAT(errors, ElementsAre(notStarted, notStarted, notStarted));
  host.plugin().updateSegments({"a"});
  EXPECT_THAT(host.seen.after("log "),
              ElementsAre("ERROR updateSegments called before SDK initialization",
                          "ERROR fetchConfiguration called before SDK initialization",
                          "ERROR refreshPrivacyText called before SDK initialization",
                          "ERROR updateSegments called before SDK initialization"));
  EXPECT_THAT(host.seen.requests, IsEmpty());
  EXPECT_EQ(host.services().api.ifBuilt(), nullptr);
}

TEST(PublicOperations, OutcomesAreToldAndDelivered) {
  StartedHost host;
  host.segments(HttpAnswer::reply(200));
  host.configuration(HttpAnswer::reply(200, configBody));
  host.plugin().updateSegments({"gold", "early bird"}, [&](const Result<bool>& result) {
    host.seen.add(result.value_or(false) ? "tags" : "no tags");
  });
  EXPECT_THAT(host.told("log INFO ✅ Segments updated"), ElementsAre(" to: gold, early bird"));
  EXPECT_EQ(host.seen.lines.back(), "tags");

  host.plugin().fetchConfiguration(
      false, [&](const auto& result) { host.seen.add("days " + std::to_string(result->daysCount)); });
  EXPECT_THAT(host.told("log INFO ✅ Configuration fetched: "),
              ElementsAre("notificationsCount=2, daysCount=3, batteryCount=4"));
  EXPECT_EQ(host.seen.lines.back(), "days 3");

  host.plugin().refreshPrivacyText([&](const auto& result) { host.seen.add("text " + *result); });
  EXPECT_THAT(host.told("log INFO ✅ Privacy text refreshed: "), ElementsAre("Mind this"));
  EXPECT_EQ(host.seen.lines.back(), "text Mind this");
  EXPECT_EQ(host.seen.requests.size(), 3u);
}

TEST(PublicOperations, FailuresAreToldAndDelivered) {
  StartedHost host;
  host.segments(HttpAnswer::reply(503));
  host.configuration(HttpAnswer::reply(404));
  std::vector<Error> errors;
  const auto keep = [&](const auto& result) { errors.push_back(result.error()); };
  host.plugin().updateSegments({"a"}, keep);
  host.plugin().fetchConfiguration(true, keep);
  host.plugin().refreshPrivacyText(keep);
  host.plugin().refreshPrivacyText();  // nobody listens: still told
  EXPECT_THAT(host.told("log ERROR Update segments failed: "), ElementsAre("Failed with status code: 503"));
  EXPECT_THAT(host.seen.after("log ERROR Fetch configuration failed: "),
              ElementsAre("Failed with status code: 404"));
  EXPECT_EQ(host.seen.after("log ERROR Refresh privacy text failed: ").size(), 2u);
  const Error notFound{"Invalid response", 404, "Failed with status code: 404"};
  EXPECT_THAT(errors, ElementsAre(Error{"Invalid response", 503, "Failed with status code: 503"}, notFound,
                                  notFound));
}

TEST(PublicOperations, TheKeptConfigurationNeedsNoStart) {
  SimulatedHost fresh;
  EXPECT_EQ(fresh.plugin().getCurrentConfiguration(), std::nullopt);
  EXPECT_EQ(fresh.plugin().getPrivacyText(), "");
  sim::PhoneSettings settings;
  settings.store = {{"Orlan.Configuration", Bytes{R"({"privacyText":"Kept"})"}}};
  SimulatedHost later(std::move(settings));
  EXPECT_EQ(later.plugin().getCurrentConfiguration(), (OrlanConfiguration{.privacyText = "Kept"}));
  EXPECT_EQ(later.plugin().getPrivacyText(), "Kept");
  EXPECT_EQ(later.plugin().getPrivacyTextBridged(), "Kept");
}

TEST(PublicOperations, BridgedTwinsGiveAValueOrAnError) {
  SimulatedHost unstarted;
  Lines heard;
  const auto outcome = [&](bool ok, const std::optional<Error>& error) {
    heard.push_back(std::string(ok ? "yes" : "no") + (error ? " " + error->description : ""));
  };
  unstarted.plugin().updateSegmentsBridged(json::Array{"a"}, outcome);
  unstarted.plugin().fetchConfigurationBridged(true, [&](const auto& value, const auto& error) {
    EXPECT_FALSE(value);
    EXPECT_EQ(error, notStarted);
  });
  EXPECT_THAT(heard, ElementsAre("no " + notStarted.description));

  StartedHost host;
  host.segments(HttpAnswer::reply(200));
  host.configuration(HttpAnswer::reply(200, configBody));
  host.plugin().updateSegmentsBridged(json::Array{"a", 1}, outcome);  // not wholly strings
  host.plugin().updateSegmentsBridged(json::Array{"a"}, {});
  host.plugin().refreshPrivacyTextBridged([&](const auto& value, const auto& error) {
    EXPECT_FALSE(error);
    heard.push_back(*value);
  });
  host.world.runFor(1s);
  EXPECT_THAT(heard, ElementsAre("no " + notStarted.description, "yes", "Mind this"));
  EXPECT_EQ(host.seen.requests.at(0).body, R"({"segmentation":[],"device_registered_id":"D1"})");
  EXPECT_EQ(host.seen.requests.at(1).body, R"({"segmentation":["a"],"device_registered_id":"D1"})");
}

TEST(PublicOperations, ACompletionMayCallBackAndCallsDoNotMeet) {
  StartedHost host;
  host.configuration(HttpAnswer::reply(200, configBody));
  int answers = 0;
  host.plugin().fetchConfiguration(true, [&](const auto&) {
    ++answers;
    host.plugin().fetchConfiguration(false, [&](const auto&) {  // answers inside the call
      ++answers;
      host.plugin().refreshPrivacyText([&](const auto&) { ++answers; });
    });
    EXPECT_EQ(answers, 2);
  });
  host.plugin().fetchConfiguration(true, [&](const auto&) { ++answers; });
  host.start();  // starting anew leaves them alone
  host.world.runFor(1s);
  EXPECT_EQ(answers, 4);
}

TEST(PublicOperations, NothingIsCalledAfterTheEnd) {
  StartedHost host;
  host.configuration(HttpAnswer::reply(200, configBody));
  host.segments(HttpAnswer::reply(200));
  int answers = 0;
  host.plugin().fetchConfiguration(true, [&](const auto&) { ++answers; });
  host.plugin().updateSegments({}, [&](const auto&) { ++answers; });
  host.quit();
  host.world.runFor(61s);
  EXPECT_EQ(answers, 0);
}

TEST(PublicOperations, ACompletionMayEndTheLibrary) {
  for (const bool inside : {false, true}) {
    StartedHost host;
    host.configuration(HttpAnswer::reply(200, configBody));
    if (inside) {
      host.plugin().fetchConfiguration(true);
      host.world.runFor(1s);
    }
    host.plugin().fetchConfiguration(!inside, [&](const auto&) { host.quit(); });
    host.world.runFor(1s);
    EXPECT_FALSE(host.runtime.has_value());
  }
}

TEST(PublicOperations, TokensComeBeforeAStartAndBringNoFacadeToLife) {
  SimulatedHost host;
  OrlanPlugin::updateAPNsToken(std::string_view("\x00\xab", 2));
  OrlanPlugin::updateFCMToken("token-123456");
  EXPECT_EQ(host.services().plugin.ifBuilt(), nullptr);
  EXPECT_THAT(host.seen.after("log • "),
              ElementsAre("Stored APNs token 00ab…", "APNs token forwarded to SDK",
                          "🔥 Stored FCM token token-12…", "🔥 FCM token forwarded to SDK"));
  host.start();
  EXPECT_EQ(host.phone.store().string("Orlan.LastSyncedDeviceToken.v1"), "token-123456");
}

TEST(PublicOperations, TheCorrelationIdIsTheStoredOneOrEmpty) {
  SimulatedHost host;
  EXPECT_EQ(host.plugin().getCorrelationId(), "");
  host.plugin().setCorrelationId(" person-1\n");
  EXPECT_EQ(host.plugin().getCorrelationId(), "person-1");
  host.plugin().clearCorrelationId();
  EXPECT_EQ(host.plugin().getCorrelationId(), "");
}

TEST(PublicOperations, PermissionsAreAskedForAndStreamed) {
  sim::PhoneSettings settings;
  settings.location.authorization = LocationAuthorization::notDetermined;
  settings.notifications.authorization = NotificationAuthorization::notDetermined;
  SimulatedHost host(std::move(settings));
  std::vector<std::int64_t> locations, pushes;
  const auto a = OrlanPlugin::locationAuthorizationPublisher().subscribe(
      [&](const auto& status) { locations.push_back(rawValue(status)); });
  const auto b = OrlanPlugin::pushAuthorizationPublisher().subscribe(
      [&](const auto& status) { pushes.push_back(rawValue(status)); });
  EXPECT_EQ(host.plugin().locationAuthorizationStatusRaw(), 0);
  EXPECT_EQ(host.plugin().pushAuthorizationStatusRaw(), 0);
  host.start();
  host.plugin().requestLocationWhenInUse();
  host.plugin().requestLocationAlways();
  host.plugin().requestPushPermission();
  host.world.runFor(1s);
  EXPECT_EQ(locations.back(), 3);
  EXPECT_EQ(pushes.back(), 2);
  EXPECT_EQ(host.plugin().locationAuthorizationStatus(), LocationAuthorization::authorizedAlways);
  EXPECT_EQ(host.plugin().pushAuthorizationStatus(), NotificationAuthorization::authorized);
}

template <class Stream>
concept Sendable = requires(Stream stream) {
  stream.send({});
};
template <class... Streams>
constexpr bool readOnly = !(Sendable<Streams> || ...);
static_assert(readOnly<decltype(LocationPermissionManager::shared().statusPublisher()),
                       decltype(LocationPermissionManager::shared().lastLocationPublisher()),
                       decltype(NotificationPermissionManager::shared().statusPublisher()),
                       decltype(NotificationManager::shared().latestPublisher()),
                       decltype(BackgroundRegionMonitor::shared().circlesPublisher()),
                       decltype(GeofenceService::shared().polygonsPublisherPublic())>);

TEST(PublicOperations, RefetchingBelongsToTheGeofenceService) {
  SimulatedHost host;
  host.plugin().refetchGeofence();
  host.plugin().refetchGeofenceBridged();
  EXPECT_EQ(host.seen.after("log ERROR ").size(), 2u);
  std::vector<std::size_t> counts;
  const auto listening = OrlanPlugin::polygonsPublisher().subscribe(
      [&](const auto& polygons) { counts.push_back(polygons.size()); });
  EXPECT_THAT(counts, ElementsAre(0u));
}

TEST(PublicOperations, LogsAndTexts) {
  StartedHost host;
  const std::string path = host.plugin().logFileURL();
  EXPECT_EQ(path, host.services().logger.logFileURL());
  host.world.runFor(1s);
  EXPECT_TRUE(host.phone.files().exists(path));
  host.plugin().clearLogs();
  host.world.runFor(1s);
  EXPECT_FALSE(host.phone.files().exists(path));
  EXPECT_EQ(host.plugin().transform("abc"), "ABC");
  EXPECT_EQ(host.plugin().transform("straße ñ"), "STRASSE Ñ");
}

}  // namespace
}  // namespace orlan
