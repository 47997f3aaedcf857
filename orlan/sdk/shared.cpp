// Where the process-wide accessors of all services lead: to the slots of the current Runtime.
#include <utility>

#include "orlan/notifications/NotificationEnvelope.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/OrlanServices.hpp"
#include "orlan/sdk/Runtime.hpp"

namespace orlan {
namespace {

OrlanServices& services() {
  return Runtime::current().services();
}

}  // namespace

Logger& Logger::shared() {
  Logger& logger = services().logger;
  (void)*logger.file_;  // opens the log
  return logger;
}
LocationTrackingReliability& LocationTrackingReliability::shared() {
  return *services().reliability;
}
APIService& APIService::shared() {
  return *services().api;
}
ForegroundGeofenceMonitor& ForegroundGeofenceMonitor::shared() {
  return *services().foregroundMonitor;
}
BackgroundRegionMonitor& BackgroundRegionMonitor::shared() {
  return *services().backgroundMonitor;
}
GeofenceService& GeofenceService::shared() {
  return *services().geofence;
}
LocationPermissionManager& LocationPermissionManager::shared() {
  return *services().locationPermission;
}
NotificationPermissionManager& NotificationPermissionManager::shared() {
  return *services().notificationPermission;
}
NotificationManager& NotificationManager::shared() {
  return *services().notificationManager;
}
NotificationBridge& NotificationBridge::shared() {
  return *services().notificationBridge;
}
OrlanPlugin& OrlanPlugin::shared() {
  return *services().plugin;
}

// A host's own records take their identifiers from the phone, as the library's do.
OrlanNotificationDetails::OrlanNotificationDetails(Content content)
    : OrlanNotificationDetails(std::move(content), services().random) {}
NotificationEnvelope::NotificationEnvelope(std::string withTitle, std::string withBody,
                                           json::Object withUserInfo)
    : NotificationEnvelope(std::move(withTitle), std::move(withBody), std::move(withUserInfo),
                           services().random) {}

}  // namespace orlan
