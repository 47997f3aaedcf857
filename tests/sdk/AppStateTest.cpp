// Signals that come when nobody expects them; the usual ones are a journey.
#include <gmock/gmock.h>

#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;
using test::SimulatedHost;
using ::testing::Contains;
using ::testing::ElementsAre;

TEST(AppState, BeforeTheRegistrationAnswersNobodyHearsSignals) {
  SimulatedHost host;
  host.plugin().start("KEY", Config::Environment::staging, {}, host.delegate);
  host.phone.application().moveTo(ApplicationState::background);
  host.world.runFor(1s);
  EXPECT_TRUE(host.seen.has("log • 📱 Initial app state check: BACKGROUND"));
  EXPECT_TRUE(host.seen.has("log • 📱 Initial app state: BACKGROUND"));
  EXPECT_THAT(host.seen.after("log • 📱 Transition "), ElementsAre());
}

TEST(AppState, LeavingWhileASecondStartIsUnderWayHandsOverToo) {
  SimulatedHost host;
  host.start();
  host.plugin().start("OTHER KEY", Config::Environment::staging, {}, host.delegate);
  host.phone.application().moveTo(ApplicationState::background);
  host.seen.lines.clear();
  host.world.runFor(1s);
  const auto monitors = host.seen.after("log • ");
  EXPECT_THAT(monitors, Contains("🔴 FG-Monitor stopped").Times(1));
  EXPECT_THAT(monitors, Contains("▶️  BG-Monitor resumed (background mode)").Times(1));
  EXPECT_FALSE(host.services().foregroundMonitor->isRunning());
}

TEST(AppState, TheCountersAreARecordAtEachTransition) {
  SimulatedHost host;
  host.start();
  host.plugin().recordFGNotification("ON_ENTER");
  EXPECT_TRUE(host.plugin().notificationTelemetry().empty());
  host.phone.application().raise(ApplicationSignal::didEnterBackground);
  EXPECT_EQ(json::print(host.plugin().notificationTelemetry()),
            R"({"total_notifications":1,"fg_notifications":1,"bg_notifications":0,"entry_notifications":1,)"
            R"("exit_notifications":0,"app_transitions":1,"session_duration":0.95})");
}

}  // namespace
}  // namespace orlan
