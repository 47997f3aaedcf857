#pragma once

#include <memory>

#include "orlan/geofence/BackgroundRegionMonitor.hpp"
#include "orlan/geofence/ForegroundGeofenceMonitor.hpp"
#include "orlan/notifications/OrlanNotificationDelegate.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"
#include "tools/orlan/simulate/Transcript.hpp"

/// What a host's delegates hear, written down. The transcript outlives them.
namespace orlan::simulate {

/// The delegates of both monitors in one: they hear the same under different names.
class MonitorDelegate : public ForegroundGeofenceDelegate, public BackgroundGeofenceDelegate {};

[[nodiscard]] std::shared_ptr<OrlanPluginDelegate> recordingPluginDelegate(Transcript& transcript);
[[nodiscard]] std::shared_ptr<OrlanNotificationDelegate> recordingNotificationDelegate(
    Transcript& transcript);
[[nodiscard]] std::shared_ptr<MonitorDelegate> recordingMonitorDelegate(Transcript& transcript);

}  // namespace orlan::simulate
