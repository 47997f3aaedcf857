#include "orlan/backend/APIService.hpp"

#include <fmt/core.h>

#include <utility>

#include "orlan/backend/Credentials.hpp"
#include "orlan/backend/DeviceRegistration.hpp"
#include "orlan/backend/StoreKeys.hpp"
#include "orlan/backend/calls.hpp"
#include "orlan/base/text.hpp"

namespace orlan {

struct APIService::Parts {
  Parts(const Platform& phone, const BaseUrls& urls, Logger& logger,
        Lazy<LocationTrackingReliability>& reliability)
      : client(urls),
        identity(phone.store, phone.device, phone.random),
        requests(phone.http, phone.main),
        with{phone, logger, client, identity, requests, reliability} {}

  ~Parts() { requests.cancelAll(); }  // while all that an answer uses is still there

  void pushTokenChanged() {
    if (const auto key = identity.registeredApiKey()) calls::syncToken(with, *key, false);
  }

  ClientState client;
  DeviceIdentity identity;
  RequestLayer requests;
  const calls::Context with;
  DeviceRegistration registration{with};
};

APIService::APIService(const Platform& phone, const BaseUrls& urls, Logger& logger,
                       Lazy<LocationTrackingReliability>& reliability)
    : parts_(std::make_unique<Parts>(phone, urls, logger, reliability)) {}

APIService::~APIService() = default;

Config::Environment APIService::env() const {
  return parts_->client.env();
}

void APIService::setEnv(Config::Environment environment) {
  parts_->client.setEnv(environment);
}

std::optional<TransmissionAppCredentials> APIService::transmissionAuthConfig() const {
  return parts_->client.credentials();
}

void APIService::setTransmissionAuthConfig(std::optional<TransmissionAppCredentials> credentials) {
  parts_->client.setCredentials(std::move(credentials));
}

bool APIService::isAuthenticated() const {
  return parts_->client.isAuthenticated();
}

void APIService::resetCredentialsIfKeyChanged(const std::string& newKey) {
  parts_->registration.abandon();
  KeyValueStore& store = parts_->with.phone.store;
  const auto oldKey = store.string(storeKeys::apiKey);
  if (!oldKey || *oldKey == newKey) return;
  for (const auto* key : {storeKeys::deviceID, storeKeys::orlanID, storeKeys::deviceRegistered,
                          storeKeys::apiKey, storeKeys::lastSyncedToken, storeKeys::environment}) {
    store.remove(key);
  }
  parts_->with.logger.warn(
      fmt::format("• Cleared cached Orlan credentials (old key {} ≠ new key {})", *oldKey, newKey));
}

Publisher<APIService::AuthPayload>& APIService::authPublisher() {
  return parts_->registration.authPublisher();
}

Single<APIService::AuthPayload> APIService::registerDevice(const std::string& apiKey,
                                                           const std::vector<std::string>& segmentations) {
  return parts_->registration.start(apiKey, segmentations);
}

void APIService::updateAPNsToken(std::string_view token) {
  auto hexadecimal = text::hex(token);
  parts_->client.setAPNsToken(hexadecimal);
  parts_->with.logger.breadcrumb("Stored APNs token " + hexadecimal.substr(0, 8) + "…");
  parts_->pushTokenChanged();
}

void APIService::updateFCMToken(std::string_view token) {
  parts_->client.setFCMToken(std::string(token));
  parts_->with.logger.breadcrumb("🔥 Stored FCM token " + std::string(text::prefix(token, 8)) + "…");
  parts_->pushTokenChanged();
}

Single<OrlanConfiguration> APIService::fetchConfiguration(bool forceRefresh) {
  return calls::fetchConfiguration(parts_->with, forceRefresh);
}

std::optional<OrlanConfiguration> APIService::cachedConfiguration() const {
  return calls::cachedConfiguration(parts_->with);
}

Single<bool> APIService::updateSegments(const std::vector<std::string>& segmentations) {
  return calls::updateSegments(parts_->with, segmentations);
}

void APIService::setCorrelationId(std::string_view identifier) {
  calls::setCorrelationId(parts_->with, identifier);
}

void APIService::clearCorrelationId() {
  calls::clearCorrelationId(parts_->with);
}

std::optional<std::string> APIService::correlationId() const {
  const auto stored = parts_->identity.correlationId();
  const auto trimmed = text::trimmed(stored);
  return trimmed.empty() ? std::nullopt : std::optional(std::string(trimmed));
}

Single<bool> APIService::submitSurveyResponse(const SurveyResponseRequest& response) {
  return calls::submitSurveyResponse(parts_->with, response);
}

Single<bool> APIService::trackSurveyEvent(const SurveyResponseRequest& event) {
  return calls::trackSurveyEvent(parts_->with, event);
}

void APIService::reportActivity(ActivityType activity, std::int64_t locationID,
                                std::int64_t curatedNotificationID, NotificationType type) {
  calls::report(parts_->with, {activity, locationID, curatedNotificationID, type});
}

void APIService::reportGeoActivity(ActivityType activity, std::int64_t locationID,
                                   std::int64_t curatedNotificationID, NotificationType type, double latitude,
                                   double longitude) {
  calls::report(parts_->with,
                {activity, locationID, curatedNotificationID, type, Coordinate{latitude, longitude}});
}

void APIService::createPluginActivity(std::string_view activity, const std::string& apiKey,
                                      Config::Environment environment) {
  calls::createPluginActivity(parts_->with, activity, apiKey, environment);
}

TransmissionAppCredentials APIService::effectiveTransmissionCredentials(
    const std::string& fallbackKey) const {
  return effectiveCredentials(parts_->client.credentials(), fallbackKey,
                              parts_->with.phone.bundle.identifier().value_or(""));
}

std::vector<std::string> APIService::segments() const {
  return parts_->identity.segments();
}

const std::string& APIService::transmissionUrl(Config::Environment environment) const {
  return parts_->client.urls().transmissionUrl(environment);
}

}  // namespace orlan
