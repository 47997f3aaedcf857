// The facade besides starting and statistics: each operation forwards to the service that owns the work.
#include <fmt/core.h>

#include <utility>

#include "orlan/base/text.hpp"
#include "orlan/sdk/Errors.hpp"
#include "orlan/sdk/OrlanPluginParts.hpp"

namespace orlan {

template <class T>
bool OrlanPlugin::Parts::refused(std::string_view operation, const Completion<T>& completion) {
  if (!starting.storedApiKey().empty()) return false;
  logger.error(fmt::format("{} called before SDK initialization", operation));
  if (completion) completion(Unexpected(errors::notInitialized()));
  return true;
}

void OrlanPlugin::updateSegments(const Segmentations& segmentations, Completion<bool> completion) {
  const Turn turn = parts_->phone.main.enter();
  if (parts_->refused("updateSegments", completion)) return;
  parts_->pending.listen(
      parts_->services.api->updateSegments(segmentations),
      [tags = text::joined(segmentations, ", ")](bool) { return "✅ Segments updated to: " + tags; },
      "Update segments failed: ", std::move(completion));
}

void OrlanPlugin::fetchConfiguration(bool forceRefresh, Completion<OrlanConfiguration> completion) {
  const Turn turn = parts_->phone.main.enter();
  if (parts_->refused("fetchConfiguration", completion)) return;
  parts_->pending.listen(
      parts_->services.api->fetchConfiguration(forceRefresh),
      [](const OrlanConfiguration& found) {
        return fmt::format("✅ Configuration fetched: notificationsCount={}, daysCount={}, batteryCount={}",
                           found.notificationsCount, found.daysCount, found.batteryCount);
      },
      "Fetch configuration failed: ", std::move(completion));
}

std::optional<OrlanConfiguration> OrlanPlugin::getCurrentConfiguration() const {
  const Turn turn = parts_->phone.main.enter();
  return parts_->services.api->cachedConfiguration();
}

void OrlanPlugin::refreshPrivacyText(Completion<std::string> completion) {
  const Turn turn = parts_->phone.main.enter();
  if (parts_->refused("refreshPrivacyText", completion)) return;
  parts_->pending.listen<OrlanConfiguration>(
      parts_->services.api->fetchConfiguration(true),
      [](const OrlanConfiguration& found) { return "✅ Privacy text refreshed: " + found.privacyText; },
      "Refresh privacy text failed: ",
      [completion = std::move(completion)](const Result<OrlanConfiguration>& found) {
        if (!completion) return;
        completion(found ? Result<std::string>(found->privacyText) : Unexpected(found.error()));
      });
}

std::string OrlanPlugin::getPrivacyText() const {
  return getCurrentConfiguration().value_or(OrlanConfiguration::defaults()).privacyText;
}

void OrlanPlugin::setCorrelationId(std::string_view correlationId) {
  const Turn turn = parts_->phone.main.enter();
  parts_->services.api->setCorrelationId(correlationId);
}

std::string OrlanPlugin::getCorrelationId() const {
  const Turn turn = parts_->phone.main.enter();
  return parts_->services.api->correlationId().value_or("");
}

void OrlanPlugin::clearCorrelationId() {
  const Turn turn = parts_->phone.main.enter();
  parts_->services.api->clearCorrelationId();
}

void OrlanPlugin::updateAPNsToken(std::string_view token) {
  APIService::shared().updateAPNsToken(token);
  Logger::shared().breadcrumb("APNs token forwarded to SDK");
}

void OrlanPlugin::updateFCMToken(std::string_view token) {
  APIService::shared().updateFCMToken(token);
  Logger::shared().breadcrumb("🔥 FCM token forwarded to SDK");
}

void OrlanPlugin::refetchGeofence() {
  const Turn turn = parts_->phone.main.enter();
  parts_->services.geofence->refetch();
}

Publisher<std::vector<Polygon>>& OrlanPlugin::polygonsPublisher() {
  return GeofenceService::shared().polygonsPublisherPublic();
}

void OrlanPlugin::requestLocationWhenInUse() {
  const Turn turn = parts_->phone.main.enter();
  parts_->services.locationPermission->requestWhenInUseAuthorization();
}

void OrlanPlugin::requestLocationAlways() {
  const Turn turn = parts_->phone.main.enter();
  parts_->services.locationPermission->requestAlwaysAuthorization();
}

LocationAuthorization OrlanPlugin::locationAuthorizationStatus() const {
  const Turn turn = parts_->phone.main.enter();
  return parts_->services.locationPermission->currentStatus();
}

std::int64_t OrlanPlugin::locationAuthorizationStatusRaw() const {
  return rawValue(locationAuthorizationStatus());
}

Publisher<LocationAuthorization>& OrlanPlugin::locationAuthorizationPublisher() {
  return LocationPermissionManager::shared().statusPublisher();
}

void OrlanPlugin::requestPushPermission() {
  const Turn turn = parts_->phone.main.enter();
  parts_->services.notificationPermission->requestPermission();
}

NotificationAuthorization OrlanPlugin::pushAuthorizationStatus() const {
  const Turn turn = parts_->phone.main.enter();
  return parts_->services.notificationPermission->currentStatus();
}

std::int64_t OrlanPlugin::pushAuthorizationStatusRaw() const {
  return rawValue(pushAuthorizationStatus());
}

Publisher<NotificationAuthorization>& OrlanPlugin::pushAuthorizationPublisher() {
  return NotificationPermissionManager::shared().statusPublisher();
}

std::string OrlanPlugin::logFileURL() const {
  return parts_->logger.logFileURL();
}

void OrlanPlugin::clearLogs() {
  parts_->logger.clear();
}

std::string OrlanPlugin::transform(std::string_view text) const {
  return text::upper(text);
}

}  // namespace orlan
