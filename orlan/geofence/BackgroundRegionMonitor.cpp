#include "orlan/geofence/BackgroundRegionMonitor.hpp"

namespace orlan {

BackgroundRegionMonitor::BackgroundRegionMonitor(MainLoop& main, Logger& logger)
    : main_(main), logger_(logger) {
  main_.assertCurrent();
}

void BackgroundRegionMonitor::pauseMonitoring() {
  main_.assertCurrent();
  if (isPaused_) return;
  logger_.breadcrumb("⏸️  BG-Monitor paused (foreground mode)");
  isPaused_ = true;
}

void BackgroundRegionMonitor::resumeMonitoring() {
  main_.assertCurrent();
  if (!isPaused_) return;
  logger_.breadcrumb("▶️  BG-Monitor resumed (background mode)");
  isPaused_ = false;
}

}  // namespace orlan
