#pragma once

#include "orlan/logging/Logger.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// Takes over from the foreground monitor while the application is not in front. Main thread.
class BackgroundRegionMonitor {
 public:
  BackgroundRegionMonitor(MainLoop& main, Logger& logger);

  static BackgroundRegionMonitor& shared();

  /// While paused the foreground monitor is in charge. Each does and logs nothing when nothing changes.
  void pauseMonitoring();
  void resumeMonitoring();

 private:
  MainLoop& main_;
  Logger& logger_;
  bool isPaused_ = false;
};

}  // namespace orlan
