#include <gtest/gtest.h>

#include "orlan/sdk/NotificationStats.hpp"
#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;

TEST(NotificationStats, CountByMonitorAndByActivationForWholeMinutes) {
  NotificationStats stats;
  stats.record(&NotificationStats::fgNotifications, "ON_ENTER");
  stats.record(&NotificationStats::bgNotifications, "ON_EXIT");
  stats.record(&NotificationStats::fgNotifications, "on_enter");
  EXPECT_DOUBLE_EQ(stats.duplicationRate(), 1.0);
  const std::pair<Duration, std::string> rows[] = {{59s, "0"},  {60s, "1"},   {90s, "1"},
                                                   {-59s, "0"}, {-61s, "-1"}, {25h, "1500"}};
  for (const auto& [elapsed, minutes] : rows) {
    EXPECT_EQ(stats.summary(TimePoint(elapsed)),
              "📊 Notification Stats (last " + minutes +
                  "m):\n   • Total: 3 (FG: 2, BG: 1)\n   • Entry: 1, Exit: 1");
  }
}

TEST(NotificationStats, TheFacadeCountsFromItsFirstUseOrTheLastReset) {
  test::SimulatedHost host;
  host.world.runFor(10min);
  host.plugin().recordBGNotification("ON_EXIT");
  host.world.runFor(5min);
  EXPECT_EQ(host.plugin().getNotificationStats(),
            "📊 Notification Stats (last 5m):\n   • Total: 1 (FG: 0, BG: 1)\n   • Entry: 0, Exit: 1");
  host.plugin().resetNotificationStats();
  host.world.runFor(90s);
  EXPECT_EQ(host.plugin().getNotificationStats(),
            "📊 Notification Stats (last 1m):\n   • Total: 0 (FG: 0, BG: 0)\n   • Entry: 0, Exit: 0");
  EXPECT_EQ(host.seen.after("log • ").front(), "📊 Recorded BG notification: ON_EXIT (Total: 1)");
}

}  // namespace
}  // namespace orlan
