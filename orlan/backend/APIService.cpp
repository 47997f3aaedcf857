#include "orlan/backend/APIService.hpp"

#include <utility>

#include "orlan/backend/ActivityReporter.hpp"
#include "orlan/backend/ClientState.hpp"
#include "orlan/backend/ConfigurationFetch.hpp"
#include "orlan/backend/CorrelationId.hpp"
#include "orlan/backend/Credentials.hpp"
#include "orlan/backend/DeviceIdentity.hpp"
#include "orlan/backend/DeviceRecord.hpp"
#include "orlan/backend/DeviceRegistration.hpp"
#include "orlan/backend/PluginActivity.hpp"
#include "orlan/backend/RequestLayer.hpp"
#include "orlan/backend/SegmentsUpdate.hpp"
#include "orlan/backend/SurveySubmission.hpp"
#include "orlan/backend/TokenSync.hpp"
#include "orlan/base/text.hpp"

namespace orlan {

struct APIService::Parts {
  Parts(const Platform& phone, const BaseUrls& urls, Logger& log,
        Lazy<LocationTrackingReliability>& reliability)
      : logger(log),
        bundle(phone.bundle),
        client(urls),
        identity(phone.store, phone.device, phone.random),
        records(identity, phone.device, phone.bundle),
        requests(phone.http, phone.main),
        tokens(client, records, phone.store, requests, logger),
        registration(client, identity, records, phone.store, requests, tokens, logger),
        activities(client, identity, phone.clock, phone.random, requests, logger, reliability),
        plugin(client, identity, phone.clock, requests, logger),
        configuration(client, identity, phone.bundle, phone.store, requests, logger),
        segments(client, identity, phone.store, requests, logger),
        correlation(identity, phone.store, tokens, logger),
        surveys(client, identity, requests, logger) {}

  ~Parts() { requests.cancelAll(); }  // while all that an answer uses is still there

  void pushTokenChanged() {
    if (const auto key = identity.registeredApiKey()) tokens.sync(*key, false);
  }

  Logger& logger;
  Bundle& bundle;
  ClientState client;
  DeviceIdentity identity;
  DeviceRecords records;
  RequestLayer requests;
  TokenSync tokens;
  DeviceRegistration registration;
  ActivityReporter activities;
  PluginActivity plugin;
  ConfigurationFetch configuration;
  SegmentsUpdate segments;
  CorrelationId correlation;
  SurveySubmission surveys;
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

Publisher<APIService::AuthPayload>& APIService::authPublisher() {
  return parts_->registration.registered();
}

Single<APIService::AuthPayload> APIService::registerDevice(const std::string& apiKey,
                                                           const std::vector<std::string>& segmentations) {
  return parts_->registration.start(apiKey, segmentations);
}

void APIService::updateAPNsToken(std::string_view token) {
  auto hexadecimal = text::hex(token);
  parts_->client.setAPNsToken(hexadecimal);
  parts_->logger.breadcrumb("Stored APNs token " + hexadecimal.substr(0, 8) + "…");
  parts_->pushTokenChanged();
}

void APIService::updateFCMToken(std::string_view token) {
  parts_->client.setFCMToken(std::string(token));
  parts_->logger.breadcrumb("🔥 Stored FCM token " + std::string(text::prefix(token, 8)) + "…");
  parts_->pushTokenChanged();
}

Single<OrlanConfiguration> APIService::fetchConfiguration(bool forceRefresh) {
  return parts_->configuration.fetch(forceRefresh);
}

std::optional<OrlanConfiguration> APIService::cachedConfiguration() const {
  return parts_->configuration.cached();
}

Single<bool> APIService::updateSegments(const std::vector<std::string>& segmentations) {
  return parts_->segments.send(segmentations);
}

void APIService::setCorrelationId(std::string_view identifier) {
  parts_->correlation.set(identifier);
}

void APIService::clearCorrelationId() {
  parts_->correlation.clear();
}

std::optional<std::string> APIService::correlationId() const {
  return parts_->correlation.get();
}

Single<bool> APIService::submitSurveyResponse(const SurveyResponseRequest& response) {
  return parts_->surveys.submit(response);
}

Single<bool> APIService::trackSurveyEvent(const SurveyResponseRequest& event) {
  return parts_->surveys.track(event);
}

void APIService::reportActivity(ActivityType activity, std::int64_t locationID,
                                std::int64_t curatedNotificationID, NotificationType type) {
  parts_->activities.report({activity, locationID, curatedNotificationID, type});
}

void APIService::reportGeoActivity(ActivityType activity, std::int64_t locationID,
                                   std::int64_t curatedNotificationID, NotificationType type, double latitude,
                                   double longitude) {
  parts_->activities.reportGeo({activity, locationID, curatedNotificationID, type}, {latitude, longitude});
}

void APIService::createPluginActivity(std::string_view activity, const std::string& apiKey,
                                      Config::Environment environment) {
  parts_->plugin.create(activity, apiKey, environment);
}

TransmissionAppCredentials APIService::effectiveTransmissionCredentials(
    const std::string& fallbackKey) const {
  return effectiveCredentials(parts_->client.credentials(), fallbackKey,
                              parts_->bundle.identifier().value_or(""));
}

std::vector<std::string> APIService::segments() const {
  return parts_->identity.segments();
}

const std::string& APIService::transmissionUrl(Config::Environment environment) const {
  return parts_->client.urls().transmissionUrl(environment);
}

}  // namespace orlan
