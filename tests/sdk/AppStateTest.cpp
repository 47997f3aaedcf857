#include <gmock/gmock.h>

#include "orlan/sdk/OrlanPlugin.hpp"
#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;
using test::SimulatedHost;
using ::testing::ElementsAre;

constexpr const char* rule = "📱 ═══════════════════════════════════════════════";

std::vector<std::string> breadcrumbsOf(SimulatedHost& host, ApplicationSignal signal) {
  host.seen.lines.clear();
  host.phone.application().raise(signal);
  return host.seen.after("log • ");
}

// Registration took 50 ms; the session counts from then.
TEST(AppState, LeavingHandsOverToTheBackgroundMonitor) {
  SimulatedHost host;
  host.start();
  host.world.runUntil(12'390ms);
  EXPECT_THAT(breadcrumbsOf(host, ApplicationSignal::didEnterBackground),
              ElementsAre(rule, "📱 App ENTERED BACKGROUND - Switching to BG mode", rule,
                          "📱 Transition #1: ACTIVE → BACKGROUND", "📱 Time since launch: 12.3s",
                          "📱 Stopping foreground monitor", "🔴 FG-Monitor stopped",
                          "📱 Resuming background monitor", "▶️  BG-Monitor resumed (background mode)",
                          "📱 Background mode active - only BG notifications will fire",
                          "📊 Notification Stats (last 0m):"));
  EXPECT_TRUE(host.seen.has("updates foreground off 10.0 10.0"));
}

TEST(AppState, ComingBackHandsOverToTheForegroundMonitor) {
  SimulatedHost host({.application = ApplicationState::background});
  host.start();
  EXPECT_THAT(breadcrumbsOf(host, ApplicationSignal::willEnterForeground),
              ElementsAre(rule, "📱 App ENTERED FOREGROUND - Switching to FG mode", rule,
                          "📱 Transition #1: BACKGROUND → FOREGROUND", "📱 Time since launch: 0.9s",
                          "📱 Starting foreground monitor", "🟢 FG-Monitor started (live GPS)",
                          "📱 Pausing background monitor", "⏸️  BG-Monitor paused (foreground mode)",
                          "📱 Foreground mode active - only FG notifications will fire",
                          "📊 Notification Stats (last 0m):"));
}

TEST(AppState, EverySignalCountsAndTheMonitorSaysNothingTwice) {
  SimulatedHost host;
  host.start();
  (void)breadcrumbsOf(host, ApplicationSignal::didEnterBackground);
  const auto again = breadcrumbsOf(host, ApplicationSignal::didEnterBackground);
  EXPECT_EQ(again.at(3), "📱 Transition #2: BACKGROUND → BACKGROUND");
  EXPECT_EQ(again.at(7), "📱 Resuming background monitor");
  EXPECT_EQ(again.at(8), "📱 Background mode active - only BG notifications will fire");
}

TEST(AppState, BeforeTheRegistrationAnswersNobodyHearsSignals) {
  SimulatedHost host;
  host.plugin().start("KEY", Config::Environment::staging, {}, host.delegate);
  host.phone.application().moveTo(ApplicationState::background);
  host.world.runFor(1s);
  EXPECT_TRUE(host.seen.has("log • 📱 Initial app state check: BACKGROUND"));
  EXPECT_TRUE(host.seen.has("log • 📱 Initial app state: BACKGROUND"));
  EXPECT_FALSE(host.seen.has("log • 📱 Transition #1: ACTIVE → BACKGROUND"));
}

// Out of order, and while the first campaigns are on their way.
TEST(AppState, TheLastSignalDecidesWhoReacts) {
  SimulatedHost host({.location = {.position = Location{{51.5, -0.12}, 5.0, {}}}});
  host.plugin().start("KEY", Config::Environment::staging, {}, host.delegate);
  host.world.runFor(60ms);  // registered, the fetch under way
  for (const auto signal : {ApplicationSignal::didBecomeActive, ApplicationSignal::willEnterForeground,
                            ApplicationSignal::didEnterBackground, ApplicationSignal::willResignActive}) {
    host.phone.application().raise(signal);
  }
  host.world.runFor(1s);
  const auto lines = host.seen.after("log • ");
  EXPECT_THAT(lines, ::testing::IsSupersetOf({"📱 Transition #1: ACTIVE → FOREGROUND",
                                              "📱 Transition #2: ACTIVE → BACKGROUND",
                                              "🎯 FG-Monitor loaded 0 polygon geofences"}));
  EXPECT_THAT(lines, ::testing::Contains("🔴 FG-Monitor stopped").Times(1));
  EXPECT_THAT(lines, ::testing::Contains("⏸️  BG-Monitor paused (foreground mode)").Times(1));
}

TEST(AppState, LeavingWhileASecondStartIsUnderWayHandsOverToo) {
  SimulatedHost host;
  host.start();
  host.plugin().start("OTHER KEY", Config::Environment::staging, {}, host.delegate);
  host.phone.application().moveTo(ApplicationState::background);
  host.seen.lines.clear();
  host.world.runFor(1s);
  const auto monitors = host.seen.after("log • ");
  EXPECT_THAT(monitors, ::testing::Contains("🔴 FG-Monitor stopped").Times(1));
  EXPECT_THAT(monitors, ::testing::Contains("▶️  BG-Monitor resumed (background mode)").Times(1));
  EXPECT_FALSE(host.services().foregroundMonitor->isRunning());
}

TEST(AppState, TheOtherTwoSignalsAreOnlyNoted) {
  SimulatedHost host;
  host.start();
  EXPECT_THAT(breadcrumbsOf(host, ApplicationSignal::willResignActive),
              ElementsAre("📱 App will resign ACTIVE (about to lose focus) - 0.9s since launch"));
  EXPECT_THAT(breadcrumbsOf(host, ApplicationSignal::didBecomeActive),
              ElementsAre("📱 App became ACTIVE (visible and receiving events) - 0.9s since launch"));
  EXPECT_EQ(breadcrumbsOf(host, ApplicationSignal::didEnterBackground).at(3),
            "📱 Transition #1: ACTIVE → BACKGROUND");
}

TEST(AppState, NotificationsAreReportedAtEachTransition) {
  SimulatedHost host;
  host.start();
  host.plugin().recordFGNotification("ON_ENTER");
  EXPECT_TRUE(host.plugin().notificationTelemetry().empty());
  const auto lines = breadcrumbsOf(host, ApplicationSignal::didEnterBackground);
  EXPECT_THAT(std::vector(lines.end() - 3, lines.end()),
              ElementsAre("📊 Notification Stats (last 0m):", "📊 Notification duplication rate: 1.00x",
                          "📊 Sending notification telemetry to backend"));
  const json::Object& record = host.plugin().notificationTelemetry();
  EXPECT_EQ(record.size(), 7u);
  EXPECT_EQ(*record.find("app_transitions"), json::Value(1));
  EXPECT_EQ(*record.find("session_duration"), json::Value(0.95));
}

}  // namespace
}  // namespace orlan
