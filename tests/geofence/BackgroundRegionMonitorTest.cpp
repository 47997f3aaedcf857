#include <gmock/gmock.h>

#include "geofence/GeofenceHost.hpp"
#include "orlan/geofence/BackgroundRegionMonitor.hpp"

namespace orlan::test {
namespace {

TEST(BackgroundRegionMonitor, SaysOnlyWhenItChangesHands) {
  GeofenceHost host;
  BackgroundRegionMonitor monitor(host.platform.main, host.logger);
  monitor.resumeMonitoring();
  monitor.pauseMonitoring();
  monitor.pauseMonitoring();
  monitor.resumeMonitoring();
  monitor.resumeMonitoring();
  EXPECT_THAT(host.seen(), testing::ElementsAre("• ⏸️  BG-Monitor paused (foreground mode)",
                                                "• ▶️  BG-Monitor resumed (background mode)"));
}

}  // namespace
}  // namespace orlan::test
