#include <gmock/gmock.h>

#include "geofence/Campaigns.hpp"
#include "geofence/GeofenceHost.hpp"
#include "orlan/geofence/CampaignReactions.hpp"

namespace orlan::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Notes when each hook is called.
class NotedHooks final : public ReactionHooks {
 public:
  NotedHooks(Transcript& transcript, std::optional<Coordinate> position)
      : transcript_(transcript), position_(position) {}

  [[nodiscard]] std::string lineSuffix() const override { return " (suffix)"; }
  void afterLine() override { transcript_.note("hook: after line"); }
  void tellDelegate() override { transcript_.note("hook: delegate"); }
  void beforeReports() override { transcript_.note("hook: before reports"); }
  [[nodiscard]] std::optional<Coordinate> position() const override { return position_; }

 private:
  Transcript& transcript_;
  std::optional<Coordinate> position_;
};

/// A monitor's worth of reactions, with everything heard noted.
struct Reacting {
  Reacting(GeofenceHost& at, const ReactionStyle& style)
      : host(at), reactions(at.platform.main, at.services(), style) {
    heard.add(
        reactions.enterPublisher().subscribe([this](const Crossing& crossing) { note("enter", crossing); }));
    heard.add(
        reactions.exitPublisher().subscribe([this](const Crossing& crossing) { note("exit", crossing); }));
  }
  void note(const std::string& stream, const Crossing& at) {
    host.transcript.note("publish " + stream + " " + std::to_string(at.first) + "," +
                         std::to_string(at.second));
  }

  std::vector<std::string> enter(const CampaignData::Campaign& campaign,
                                 std::optional<Coordinate> position = {}) {
    NotedHooks hooks(host.transcript, position);
    reactions.entered(campaign, hooks);
    return host.seen();
  }
  std::vector<std::string> exit(const CampaignData::Campaign& campaign,
                                std::optional<Coordinate> position = {}) {
    NotedHooks hooks(host.transcript, position);
    reactions.exited(campaign, hooks);
    return host.seen();
  }

  GeofenceHost& host;
  CampaignReactions reactions;
  SubscriptionBag heard;
};

const auto shop = campaign(42, 7,
                           {notification(1, "on_enter", "Welcome"), notification(2, "ON_EXIT", "Goodbye"),
                            notification(3, "ON_ENTER", "Offer"), notification(4, "PUSH", "Pushed")});
const auto quiet = campaign(8, 9);
constexpr Coordinate place{51.5, -0.125};

std::string info(int notification) {
  return R"({"campaign_id": 42, "location_id": 7, "n_id": )" + std::to_string(notification) +
         R"(, "mediaType": null, "mediaUrl": null, "ctaLabel": null, "ctaUrl": null})";
}

TEST(ForegroundReactions, AnEntryInOrder) {
  GeofenceHost host;
  Reacting monitor(host, ReactionStyle::foreground);
  EXPECT_THAT(
      monitor.enter(shop, place),
      ElementsAre(
          "• 🟢 FG didEnterPolygon camp 42 at 00:00:00.000 (suffix)", "hook: after line",
          "hook: delegate", "publish enter 42,7",
          "• 🔔 FG sendLocalNotifications - activation: ON_ENTER, campaign: 42",
          "• 🔔 FG Creating notification - id: 1, headline: Welcome",
          "• 🔔 FG Notification userInfo: " + info(1),
          "report notification_delivered as notification of 1 at 7 (-1.0,-1.0)", "scheduled Welcome",
          "• 🔔 FG Creating notification - id: 3, headline: Offer", "• 🔔 FG Notification userInfo: " + info(3),
          "report notification_delivered as notification of 3 at 7 (-1.0,-1.0)", "scheduled Offer",
          "count FG ON_ENTER", "hook: before reports", "• 🟢 Reporting Geo",
          "report geofence_entry as location of -1 at 7 (51.5,-0.125)",
          "report location_update as location of -1 at 7 (51.5,-0.125)",
          "• 🔔 FG Notification scheduled successfully", "• 🔔 FG Notification scheduled successfully"));
}

TEST(BackgroundReactions, AnEntryInOrder) {
  GeofenceHost host;
  Reacting monitor(host, ReactionStyle::background);
  EXPECT_THAT(
      monitor.enter(shop, place),
      ElementsAre("• 📥 BG didEnterRegion camp 42 at 00:00:00.000 (suffix)", "hook: after line",
                  "hook: delegate", "publish enter 42,7",
                  "• 🔔 sendLocalNotifications - activation: ON_ENTER, campaign: 42",
                  "• 🔔 Creating notification - id: 1, headline: Welcome",
                  "report notification_delivered as notification of 1 at 7 (-1.0,-1.0)",
                  "• 🔔 Notification userInfo: " + info(1), "scheduled Welcome",
                  "• 🔔 Creating notification - id: 3, headline: Offer",
                  "report notification_delivered as notification of 3 at 7 (-1.0,-1.0)",
                  "• 🔔 Notification userInfo: " + info(3), "scheduled Offer", "count BG ON_ENTER",
                  "hook: before reports", "report geofence_entry as geofence of -1 at 7 (51.5,-0.125)",
                  "report location_update as location of -1 at 7 (51.5,-0.125)",
                  "• 🔔 Notification scheduled successfully", "• 🔔 Notification scheduled successfully"));
}

TEST(ForegroundReactions, AnExitAndItsCooldown) {
  GeofenceHost host;
  Reacting monitor(host, ReactionStyle::foreground);
  monitor.enter(shop);
  host.world.runFor(30'250ms);
  EXPECT_THAT(
      monitor.exit(shop, place),
      ElementsAre("• 🔴 FG didExitPolygon camp 42 at 00:00:30.250 (dwell: 30.2s) (suffix)", "hook: after line",
                  "hook: delegate", "publish exit 42,7", "store Orlan_AppStartTime = 788918400.0",
                  "store Orlan_LastNotification_42_ON_EXIT = 788918430.25",
                  "• 🔔 Allowing ON_EXIT notification for campaign 42 - cooldown passed",
                  "• 🔔 FG sendLocalNotifications - activation: ON_EXIT, campaign: 42",
                  "• 🔔 FG Creating notification - id: 2, headline: Goodbye",
                  "• 🔔 FG Notification userInfo: " + info(2),
                  "report notification_delivered as notification of 2 at 7 (-1.0,-1.0)", "scheduled Goodbye",
                  "count FG ON_EXIT", "hook: before reports", "• 🟢 Reporting Geo",
                  "report geofence_exit as location of -1 at 7 (51.5,-0.125)",
                  "report location_update as location of -1 at 7 (51.5,-0.125)",
                  "• 🔔 FG Notification scheduled successfully"));
  host.world.runFor(899'900ms);
  (void)host.seen();
  EXPECT_THAT(monitor.exit(shop),
              ElementsAre("• 🔴 FG didExitPolygon camp 42 at 00:15:30.150 (dwell: 930.1s) (suffix)",
                          "hook: after line", "hook: delegate", "publish exit 42,7",
                          "store Orlan_AppStartTime = 788918400.0",
                          "• 🔔 Skipping ON_EXIT notification for campaign 42 - cooldown active (899s < 900s)",
                          "• 🔴 Skipping ON_EXIT notifications due to cooldown", "hook: before reports",
                          "• 🔴 NOT Reporting Geo"));
  host.world.runFor(100ms);
  EXPECT_THAT(monitor.exit(shop), testing::Contains("scheduled Goodbye")) << "900 s after the one allowed";
}

TEST(BackgroundReactions, AnExitAndItsCooldown) {
  GeofenceHost host;
  Reacting monitor(host, ReactionStyle::background);
  monitor.enter(shop);
  host.world.runFor(30'250ms);
  EXPECT_THAT(monitor.exit(shop),
              ElementsAre("• 📤 BG didExitRegion camp 42 at 00:00:30.250 (dwell time: 30s) (suffix)",
                          "hook: after line", "hook: delegate", "publish exit 42,7",
                          "store Orlan_AppStartTime = 788918400.0",
                          "store Orlan_LastNotification_42_ON_EXIT = 788918430.25",
                          "• 🔔 BG Allowing ON_EXIT notification for campaign 42 - cooldown passed",
                          "• 🔔 sendLocalNotifications - activation: ON_EXIT, campaign: 42",
                          "• 🔔 Creating notification - id: 2, headline: Goodbye",
                          "report notification_delivered as notification of 2 at 7 (-1.0,-1.0)",
                          "• 🔔 Notification userInfo: " + info(2), "scheduled Goodbye", "count BG ON_EXIT",
                          "hook: before reports", "• 🔔 Notification scheduled successfully"))
      << "no position: nothing reported, nothing said";
  EXPECT_THAT(
      monitor.exit(shop),
      ElementsAre("• 📤 BG didExitRegion camp 42 at 00:00:30.250 (dwell time: 30s) (suffix)",
                  "hook: after line", "hook: delegate", "publish exit 42,7",
                  "store Orlan_AppStartTime = 788918400.0",
                  "• 🔔 BG Skipping ON_EXIT notification for campaign 42 - cooldown active (0s < 900s)",
                  "• 📤 BG Skipping ON_EXIT notifications due to cooldown", "hook: before reports"));
}

TEST(CampaignReactions, ReEntriesSayHowLongAgoAndNeverCoolDown) {
  const std::pair<const ReactionStyle*, const char*> rows[] = {
      {&ReactionStyle::foreground,
       "• 🟢 FG didEnterPolygon camp 8 at 00:00:02.600 (re-entry after 1.6s) (suffix)"},
      {&ReactionStyle::background,
       "• 📥 BG didEnterRegion camp 8 at 00:00:02.600 (re-entry after 2s) (suffix)"}};
  for (const auto& [style, line] : rows) {
    GeofenceHost host;
    Reacting monitor(host, *style);
    monitor.enter(quiet);
    host.world.runFor(1s);
    monitor.exit(quiet);
    host.world.runFor(1600ms);
    EXPECT_EQ(monitor.enter(quiet).front(), line);
  }
}

TEST(CampaignReactions, WithoutAMatchingNotificationStillCountsAndReports) {
  GeofenceHost host;
  Reacting monitor(host, ReactionStyle::background);
  EXPECT_THAT(
      monitor.enter(quiet, place),
      ElementsAre("• 📥 BG didEnterRegion camp 8 at 00:00:00.000 (suffix)", "hook: after line",
                  "hook: delegate", "publish enter 8,9",
                  "• 🔔 sendLocalNotifications - activation: ON_ENTER, campaign: 8", "count BG ON_ENTER",
                  "hook: before reports", "report geofence_entry as geofence of -1 at 9 (51.5,-0.125)",
                  "report location_update as location of -1 at 9 (51.5,-0.125)"));
}

TEST(CampaignReactions, ARefusedNotificationIsLoggedAndStaysReported) {
  const std::pair<const ReactionStyle*, const char*> rows[] = {
      {&ReactionStyle::foreground, "ERROR 🔔 FG Failed to schedule notification: not allowed"},
      {&ReactionStyle::background,
       "ERROR \xEF\xBF\xBD\xEF\xBF\xBD Failed to schedule notification: not allowed"}};
  for (const auto& [style, line] : rows) {
    GeofenceHost host;
    host.phone.notifications().setRefusal(Error{"Centre", 1, "not allowed"});
    Reacting monitor(host, *style);
    const auto seen = monitor.enter(shop);
    EXPECT_EQ(seen.back(), line);
    EXPECT_THAT(seen,
                testing::Contains("report notification_delivered as notification of 3 at 7 (-1.0,-1.0)"));
  }
}

TEST(CampaignReactions, RequestsCarryTheNotificationAndArriveInASecond) {
  GeofenceHost host;
  Reacting monitor(host, ReactionStyle::foreground);
  monitor.enter(shop);
  ASSERT_THAT(host.phone.scheduled(), SizeIs(2));
  const auto& first = host.phone.scheduled()[0];
  EXPECT_EQ(first.content.title, "Welcome");
  EXPECT_EQ(first.content.body, "About Welcome");
  EXPECT_TRUE(first.content.defaultSound);
  EXPECT_EQ(first.content.badge, std::nullopt);
  EXPECT_EQ(first.delay, 1s);
  EXPECT_THAT(first.identifier, SizeIs(36));
  EXPECT_NE(first.identifier, host.phone.scheduled()[1].identifier);
}

TEST(CampaignReactions, AnAnswerOfTheCentreAfterTheMonitorsEndIsForgotten) {
  GeofenceHost host;
  auto monitor = std::make_unique<Reacting>(host, ReactionStyle::foreground);
  NotedHooks hooks(host.transcript, {});
  monitor->reactions.entered(shop, hooks);
  monitor.reset();
  (void)host.transcript.take();
  EXPECT_THAT(host.seen(), IsEmpty());
}

TEST(CooldownCheck, OnlyExitsHaveOne) {
  GeofenceHost host;
  CooldownCheck foreground(host.services(), "🔔 "), background(host.services(), "🔔 BG ");
  EXPECT_TRUE(foreground.allows(42, "ON_ENTER"));
  EXPECT_TRUE(background.allows(42, "on_exit"));
  EXPECT_THAT(host.seen(),
              ElementsAre("• 🔔 Allowing ON_ENTER notification for campaign 42 - no cooldown on entry",
                          "• 🔔 BG Allowing on_exit notification for campaign 42 - no cooldown on entry"));
  EXPECT_THAT(foreground.lastNotificationTime(), IsEmpty());
}

TEST(CooldownCheck, IsSharedByBothMonitorsButCampaignByCampaign) {
  GeofenceHost host;
  CooldownCheck foreground(host.services(), "🔔 "), background(host.services(), "🔔 BG ");
  EXPECT_TRUE(foreground.allows(42, "ON_EXIT"));
  EXPECT_TRUE(background.allows(43, "ON_EXIT"));
  EXPECT_FALSE(background.allows(42, "ON_EXIT"));
  EXPECT_FALSE(foreground.allows(43, "ON_EXIT"));
  background.clear();
  EXPECT_TRUE(foreground.allows(42, "ON_EXIT"));
  EXPECT_THAT(foreground.lastNotificationTime(), SizeIs(1));
  EXPECT_THAT(background.lastNotificationTime(), IsEmpty());
  EXPECT_EQ(host.phone.store().bytes("Orlan_AppStartTime"), "788918400.0");
}

TEST(CooldownCheck, ALaterRunIsRecognisedOnce) {
  GeofenceHost host;
  CooldownCheck before(host.services(), "🔔 BG ");
  EXPECT_TRUE(before.allows(42, "ON_EXIT"));
  host.world.runFor(5s);
  CooldownCheck later(host.services(), "🔔 ");
  host.world.runFor(60s);
  (void)host.seen();
  EXPECT_TRUE(later.allows(42, "ON_EXIT"));
  EXPECT_THAT(host.seen(), ElementsAre("• 🔔 App restarted, clearing cooldown for campaign 42",
                                       "remove Orlan_LastNotification_42_ON_EXIT",
                                       "store Orlan_LastNotification_42_ON_EXIT = 788918465.0",
                                       "store Orlan_AppStartTime = 788918405.0"));
  EXPECT_THAT(later.lastNotificationTime(), IsEmpty());
  host.world.runFor(60s);
  EXPECT_FALSE(later.allows(42, "ON_EXIT"));
  EXPECT_FALSE(before.allows(42, "ON_EXIT")) << "the earlier start is no restart";
  EXPECT_THAT(
      host.seen(),
      ElementsAre("store Orlan_AppStartTime = 788918405.0",
                  "• 🔔 Skipping ON_EXIT notification for campaign 42 - cooldown active (60s < 900s)",
                  "store Orlan_AppStartTime = 788918400.0",
                  "• 🔔 BG Skipping ON_EXIT notification for campaign 42 - cooldown active (60s < 900s)"));
}

TEST(CooldownCheck, AClockSetBackDeniesWithANegativeTime) {
  GeofenceHost host;
  CooldownCheck check(host.services(), "🔔 ");
  EXPECT_TRUE(check.allows(42, "ON_EXIT"));
  host.phone.clock().set(host.phone.clock().now() - 3600'900ms);
  EXPECT_FALSE(check.allows(42, "ON_EXIT"));
  EXPECT_EQ(host.seen().back(),
            "• 🔔 Skipping ON_EXIT notification for campaign 42 - cooldown active (-3600s < 900s)");
}

TEST(CooldownCheck, ClearingSaysWhose) {
  GeofenceHost host;
  CooldownCheck foreground(host.services(), "🔔 "), background(host.services(), "🔔 BG ");
  foreground.clear();
  background.clear();
  EXPECT_THAT(host.seen(), ElementsAre("• 🔔 Cleared all notification cooldowns",
                                       "• 🔔 BG Cleared all notification cooldowns"));
}

}  // namespace
}  // namespace orlan::test
