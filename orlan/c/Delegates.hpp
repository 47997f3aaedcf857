#pragma once

#include <memory>

#include "orlan/c/monitors.h"
#include "orlan/c/notifications.h"
#include "orlan/c/plugin.h"
#include "orlan/geofence/BackgroundRegionMonitor.hpp"
#include "orlan/geofence/ForegroundGeofenceMonitor.hpp"
#include "orlan/notifications/OrlanNotificationDelegate.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"

/// Delegates of the host's as the services know them. NULL is nobody.
namespace orlan::c {

[[nodiscard]] std::shared_ptr<OrlanPluginDelegate> delegateFrom(const orlan_plugin_delegate* given);
[[nodiscard]] std::shared_ptr<ForegroundGeofenceDelegate> foregroundDelegateFrom(
    const orlan_geofence_delegate* given);
[[nodiscard]] std::shared_ptr<BackgroundGeofenceDelegate> backgroundDelegateFrom(
    const orlan_geofence_delegate* given);
[[nodiscard]] std::shared_ptr<OrlanNotificationDelegate> delegateFrom(
    const orlan_notification_delegate* given);

}  // namespace orlan::c
