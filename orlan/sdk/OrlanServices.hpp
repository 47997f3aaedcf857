#pragma once

#include "orlan/backend/APIService.hpp"
#include "orlan/base/Lazy.hpp"
#include "orlan/campaigns/LocationTrackingReliability.hpp"
#include "orlan/geofence/BackgroundRegionMonitor.hpp"
#include "orlan/geofence/ForegroundGeofenceMonitor.hpp"
#include "orlan/geofence/GeofenceService.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/notifications/NotificationBridge.hpp"
#include "orlan/notifications/NotificationManager.hpp"
#include "orlan/notifications/NotificationPermissionManager.hpp"
#include "orlan/sdk/LocationPermissionManager.hpp"

namespace orlan {

class OrlanPlugin;

/// One slot a service, each built at its first use. The logger and the source of random bits are always
/// there: the logger opens its file at its own first use.
struct OrlanServices {
  Logger& logger;
  RandomSource& random;  // the phone's
  Lazy<LocationTrackingReliability>& reliability;
  Lazy<APIService>& api;
  Lazy<ForegroundGeofenceMonitor>& foregroundMonitor;
  Lazy<BackgroundRegionMonitor>& backgroundMonitor;
  Lazy<GeofenceService>& geofence;
  Lazy<LocationPermissionManager>& locationPermission;
  Lazy<NotificationPermissionManager>& notificationPermission;
  Lazy<NotificationManager>& notificationManager;
  Lazy<NotificationBridge>& notificationBridge;
  Lazy<OrlanPlugin>& plugin;
};

}  // namespace orlan
