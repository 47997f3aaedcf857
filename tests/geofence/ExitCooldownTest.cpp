#include <gmock/gmock.h>

#include "geofence/Campaigns.hpp"
#include "orlan/geofence/BackgroundRegionMonitor.hpp"
#include "orlan/geofence/CooldownStore.hpp"
#include "orlan/geofence/ExitCooldown.hpp"
#include "orlan/geofence/ForegroundGeofenceMonitor.hpp"
#include "support/FloorHost.hpp"

namespace orlan::test {
namespace {

using testing::ElementsAre;
using Verdict = ExitCooldown::Verdict;

constexpr TimePoint now = std::chrono::sys_days(std::chrono::January / 1 / 2026);

TEST(ExitCooldown, DecidesByTheLastAnnouncementAndTheRun) {
  struct Row {
    const char* name;
    TimePoint appStart;
    std::optional<TimePoint> storedStart, lastAnnounced;
    ExitCooldown expected;
  };
  constexpr TimePoint start = now - 1h;
  const Row rows[] = {
      {"first check ever", start, {}, {}, {Verdict::allowed, 0s}},
      {"first check ever, announced before", start, {}, now - 10s, {Verdict::denied, 10s}},
      {"a microsecond short", start, start, now - 900s + 1us, {Verdict::denied, 900s - 1us}},
      {"exactly 900 s", start, start, now - 900s, {Verdict::allowed, 0s}},
      {"in the future", start, start, now + 7500ms, {Verdict::denied, -7500ms}},
      {"later run", start, start - 1us, now - 10s, {Verdict::restarted, 0s}},
      {"the other monitor started later", start, start + 2s, now - 10s, {Verdict::denied, 10s}},
      {"as far back as times go", start, start, TimePoint::min(), {Verdict::allowed, 0s}},
      {"as far ahead as times go", start, start, TimePoint::max(), {Verdict::denied, now - TimePoint::max()}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ExitCooldown::decide(now, row.appStart, row.storedStart, row.lastAnnounced), row.expected)
        << row.name;
  }
}

class Cooldown : public testing::Test {
 protected:
  FloorHost host_;
  sim::SimulatedStore& values_ = host_.phone.store();
  CooldownStore store_{values_};
};

TEST_F(Cooldown, WhatIsNoTimeCountsAsAbsent) {
  const std::pair<const char*, json::Value> rows[] = {
      {"text instead of bytes", "788918400.0"},
      {"no JSON", Bytes{"tomorrow"}},
      {"a JSON text", Bytes{"\"788918400\""}},
      {"out of range", Bytes{"1e999"}},
  };
  for (const auto& [name, value] : rows) {
    values_.set(cooldownKeys::appStartTime, value);
    EXPECT_EQ(store_.appStartTime(), std::nullopt) << name;
  }
  values_.set(cooldownKeys::appStartTime, Bytes{" 788918400 "});  // somebody else's JSON of the same number
  EXPECT_EQ(store_.appStartTime(), now);
}

TEST_F(Cooldown, ClearForgetsEveryAnnouncementButNotTheStart) {
  values_.set("Orlan_LastNotification_7_ON_EXIT", "whatever stands there");
  values_.set("Orlan_LastNotifications", 1);
  store_.setLastNotification(42, "ON_EXIT", now + 1500ms);
  store_.setAppStartTime(now);
  EXPECT_EQ(store_.lastNotification(42, "ON_EXIT"), now + 1500ms);
  EXPECT_EQ(store_.lastNotification(4, "ON_EXIT"), std::nullopt);
  store_.clear();
  EXPECT_EQ(values_.contents(),
            (json::Object{{"Orlan_AppStartTime", Bytes{"788918400.0"}}, {"Orlan_LastNotifications", 1}}));
}

TEST_F(Cooldown, EntriesHaveNone) {
  ForegroundGeofenceMonitor foreground(host_.platform.main, host_.platform.locations, host_.services(),
                                       host_.reliability);
  EXPECT_TRUE(foreground.shouldSendNotification(42, "ON_ENTER"));
  EXPECT_TRUE(foreground.shouldSendNotification(42, "on_exit"));
  EXPECT_THAT(host_.seen(),
              ElementsAre("• 🔔 Allowing ON_ENTER notification for campaign 42 - no cooldown on entry",
                          "• 🔔 Allowing on_exit notification for campaign 42 - no cooldown on entry"));
}

TEST_F(Cooldown, NotificationsArePostedOnDemandAndTheirOutcomeForgottenWithTheMonitor) {
  auto monitor = std::make_unique<BackgroundRegionMonitor>(host_.platform.main, host_.platform.locations,
                                                           host_.services());
  const auto shop =
      campaign(1, 10, {notification(5, "on_exit", "Bye"), notification(6, "ON_EXIT", "See you")});
  monitor->sendLocalNotifications(shop, "ON_EXIT");
  ASSERT_EQ(host_.phone.scheduled().size(), 2U);
  EXPECT_NE(host_.phone.scheduled()[0].identifier, host_.phone.scheduled()[1].identifier);
  monitor.reset();
  (void)host_.transcript.take();
  EXPECT_THAT(host_.seen(), testing::IsEmpty());
}

}  // namespace
}  // namespace orlan::test
