// What journeys do not show of the facade's operations.
#include <gmock/gmock.h>

#include "orlan/notifications/NotificationEnvelope.hpp"
#include "orlan/sdk/NotificationStats.hpp"
#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;
using sim::HttpAnswer;
using test::SimulatedHost;
using ::testing::ElementsAre;

using Lines = std::vector<std::string>;

/// A started host with a configuration at its backend.
struct StartedHost : SimulatedHost {
  explicit StartedHost(
      HttpAnswer configuration = HttpAnswer::reply(200, R"({"configuration":{"privacyText":"Mind this"}})")) {
    phone.http().answer("GET", "/api/get-config", {std::move(configuration)});
    phone.http().answer("POST", "/api/segments", {HttpAnswer::reply(200)});
    phone.http().answer("POST", "/api/survey-response", {HttpAnswer::reply(200)});
    start();
    seen.requests.clear();
  }
};

TEST(PublicOperations, FailuresAreToldWhoeverListens) {
  StartedHost host(HttpAnswer::reply(404));
  std::vector<std::int64_t> codes;
  host.plugin().refreshPrivacyText([&](const auto& result) { codes.push_back(result.error().code); });
  host.plugin().refreshPrivacyText();
  host.world.runFor(1s);
  EXPECT_EQ(host.seen.after("log ERROR Refresh privacy text failed: ").size(), 2u);
  EXPECT_THAT(codes, ElementsAre(404));
}

TEST(PublicOperations, BridgedTwinsGiveAValueOrAnError) {
  Lines heard;
  const auto outcome = [&](bool ok, const std::optional<Error>& error) {
    heard.push_back(std::string(ok ? "yes" : "no") + (error ? " " + error->description : ""));
  };
  const auto text = [&](const auto& value, const auto& error) {
    heard.push_back(value && !error ? *value : error->description);
  };
  const std::string refused = "SDK not initialized. Call start() first.";
  SimulatedHost unstarted;
  unstarted.plugin().updateSegmentsBridged(json::Array{"a"}, outcome);
  unstarted.plugin().refreshPrivacyTextBridged(text);
  unstarted.plugin().trackSurveyEventObjC("42", {}, "shown", outcome);
  unstarted.plugin().updateSegments({"a"});
  unstarted.plugin().refetchGeofenceBridged();
  EXPECT_EQ(unstarted.seen.after("log ERROR ").size(), 5u);
  EXPECT_EQ(unstarted.services().api.ifBuilt(), nullptr);

  StartedHost host;
  host.plugin().updateSegmentsBridged(json::Array{"a", 1}, outcome);  // not wholly strings
  host.plugin().updateSegmentsBridged(json::Array{"a"}, {});
  host.plugin().refreshPrivacyTextBridged(text);
  host.plugin().fetchConfigurationBridged(
      true, [&](const auto& value, const auto&) { heard.push_back("fetched " + value->privacyText); });
  host.world.runFor(1s);
  EXPECT_THAT(
      heard, ElementsAre("no " + refused, refused, "no " + refused, "yes", "Mind this", "fetched Mind this"));
  EXPECT_EQ(host.plugin().getPrivacyTextBridged(), "Mind this");
  EXPECT_EQ(host.seen.requests.at(0).body, R"({"segmentation":[],"device_registered_id":"D1"})");
  EXPECT_EQ(host.seen.requests.at(1).body, R"({"segmentation":["a"],"device_registered_id":"D1"})");
}

TEST(PublicOperations, ACompletionMayCallBackAndCallsDoNotMeet) {
  StartedHost host;
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

TEST(PublicOperations, TokensComeBeforeAStartAndBringNoFacadeToLife) {
  SimulatedHost host;
  OrlanPlugin::updateAPNsToken("\xab");
  OrlanPlugin::updateFCMToken("token-123456");
  EXPECT_EQ(host.services().plugin.ifBuilt(), nullptr);
  host.start();
  EXPECT_EQ(host.phone.store().string("Orlan.LastSyncedDeviceToken.v1"), "token-123456");
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

TEST(PublicOperations, StatisticsCountByMonitorAndByActivationForWholeMinutes) {
  NotificationStats stats;
  stats.record(&NotificationStats::fgNotifications, "ON_ENTER");
  stats.record(&NotificationStats::bgNotifications, "ON_EXIT");
  stats.record(&NotificationStats::fgNotifications, "on_enter");
  EXPECT_DOUBLE_EQ(stats.duplicationRate(), 1.0);
  const std::pair<Duration, std::string> rows[] = {{59s, "0"}, {60s, "1"}, {-61s, "-1"}, {25h, "1500"}};
  for (const auto& [elapsed, minutes] : rows) {
    EXPECT_EQ(stats.summary(TimePoint(elapsed)),
              "📊 Notification Stats (last " + minutes +
                  "m):\n   • Total: 3 (FG: 2, BG: 1)\n   • Entry: 1, Exit: 1");
  }
}

TEST(PublicOperations, EachNotificationRecordHasAnIdOfItsOwn) {
  SimulatedHost host;
  const OrlanNotificationDetails none;
  EXPECT_EQ(none.content(), OrlanNotificationDetails::Content());
  EXPECT_EQ(none.notifID(), -1);
  EXPECT_EQ(none.id().size(), 36U);
  EXPECT_NE(none, OrlanNotificationDetails());
  EXPECT_EQ(none, OrlanNotificationDetails(none)) << "a copy is the same record";
  EXPECT_NE(NotificationEnvelope("T", "B", {}).id, NotificationEnvelope("T", "B", {}).id);
}

TEST(PublicOperations, TheLogMayBeCleared) {
  StartedHost host;
  const std::string path = host.plugin().logFileURL();
  EXPECT_EQ(path, host.services().logger.logFileURL());
  EXPECT_TRUE(host.phone.files().exists(path));
  host.plugin().clearLogs();
  host.world.runFor(1s);
  EXPECT_FALSE(host.phone.files().exists(path));
}

}  // namespace
}  // namespace orlan
