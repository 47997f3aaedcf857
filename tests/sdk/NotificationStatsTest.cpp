#include <gtest/gtest.h>

#include "orlan/sdk/NotificationStats.hpp"
#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;

TEST(NotificationStats, CountsByMonitorAndByActivation) {
  NotificationStats stats;
  stats.record(&NotificationStats::fgNotifications, "ON_ENTER");
  stats.record(&NotificationStats::bgNotifications, "ON_EXIT");
  stats.record(&NotificationStats::fgNotifications, "on_enter");
  EXPECT_EQ(stats, (NotificationStats{.fgNotifications = 2,
                                      .bgNotifications = 1,
                                      .totalNotifications = 3,
                                      .entryNotifications = 1,
                                      .exitNotifications = 1,
                                      .lastReportTime = {}}));
  EXPECT_DOUBLE_EQ(stats.duplicationRate(), 1.0);
}

TEST(NotificationStats, TheSummaryCountsWholeMinutes) {
  NotificationStats stats;
  stats.record(&NotificationStats::bgNotifications, "ON_EXIT");
  struct Row {
    Duration elapsed;
    const char* minutes;
  };
  for (const auto& [elapsed, minutes] :
       {Row{0s, "0"}, {59s, "0"}, {60s, "1"}, {90s, "1"}, {-59s, "0"}, {-61s, "-1"}, {25h, "1500"}}) {
    EXPECT_EQ(stats.summary(TimePoint(elapsed)),
              "📊 Notification Stats (last " + std::string(minutes) +
                  "m):\n   • Total: 1 (FG: 0, BG: 1)\n   • Entry: 0, Exit: 1");
  }
}

TEST(NotificationStats, TheRecordForTheBackendHasSevenEntries) {
  NotificationStats stats;
  stats.record(&NotificationStats::fgNotifications, "ON_ENTER");
  EXPECT_EQ(json::print(stats.telemetry(3, 12'340ms)),
            R"({"total_notifications":1,"fg_notifications":1,"bg_notifications":0,"entry_notifications":1,)"
            R"("exit_notifications":0,"app_transitions":3,"session_duration":12.34})");
}

TEST(NotificationStats, TheFacadeCountsFromItsFirstUseOrTheLastReset) {
  test::SimulatedHost host;
  host.world.runFor(10min);
  OrlanPlugin& plugin = host.plugin();
  plugin.recordFGNotification("ON_ENTER");
  plugin.recordBGNotification("ON_EXIT");
  host.world.runFor(5min);
  EXPECT_EQ(plugin.getNotificationStats(),
            "📊 Notification Stats (last 5m):\n   • Total: 2 (FG: 1, BG: 1)\n   • Entry: 1, Exit: 1");
  plugin.resetNotificationStats();
  host.world.runFor(90s);
  EXPECT_EQ(plugin.getNotificationStats(),
            "📊 Notification Stats (last 1m):\n   • Total: 0 (FG: 0, BG: 0)\n   • Entry: 0, Exit: 0");
  EXPECT_EQ(host.seen.after("log • "),
            (std::vector<std::string>{"📊 Recorded FG notification: ON_ENTER (Total: 1)",
                                      "📊 Recorded BG notification: ON_EXIT (Total: 2)",
                                      "📊 Resetting notification statistics"}));
}

}  // namespace
}  // namespace orlan
