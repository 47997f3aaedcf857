#pragma once

#include <memory>

#include "orlan/geofence/BackgroundRegionMonitor.hpp"
#include "orlan/geofence/ForegroundGeofenceMonitor.hpp"
#include "orlan/notifications/OrlanNotificationDelegate.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"
#include "tools/orlan/simulate/Transcript.hpp"

namespace orlan::simulate {

/// All delegates of a host in one.
class HostDelegate : public OrlanPluginDelegate,
                     public OrlanNotificationDelegate,
                     public ForegroundGeofenceDelegate,
                     public BackgroundGeofenceDelegate {};

/// Writes down what it hears. The transcript outlives it.
[[nodiscard]] std::shared_ptr<HostDelegate> recordingDelegate(Transcript& transcript);

}  // namespace orlan::simulate
