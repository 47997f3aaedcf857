#include "orlan/sdk/OrlanPlugin.hpp"

#include <fmt/format.h>

#include <utility>

#include "orlan/base/text.hpp"
#include "orlan/sdk/OrlanPluginParts.hpp"

namespace orlan {

void OrlanPlugin::Parts::reportStatistics() {
  logger.breadcrumb(notificationStats.summary(phone.clock.now()));
  if (notificationStats.totalNotifications == 0) return;
  logger.breadcrumb(fmt::format("📊 Notification duplication rate: {}x",
                                text::fixed(notificationStats.duplicationRate(), 2)));
  if (starting.storedApiKey().empty()) return;
  telemetry = notificationStats.telemetry(monitoring.transitionCount(), monitoring.sinceLaunch());
  logger.breadcrumb("📊 Sending notification telemetry to backend");
}

OrlanPlugin::OrlanPlugin(const Platform& phone, OrlanServices& services)
    : parts_(std::make_unique<Parts>(*this, phone, services)) {}

OrlanPlugin::~OrlanPlugin() = default;

void OrlanPlugin::start(const std::string& apiKey, Config::Environment env,
                        const Segmentations& segmentations, const Delegate& delegate) {
  const Turn turn = parts_->phone.main.enter();
  parts_->starting.withApiKey(apiKey, env, segmentations, delegate);
}

void OrlanPlugin::start(Config::Environment env, const Segmentations& segmentations,
                        const Delegate& delegate) {
  const Turn turn = parts_->phone.main.enter();
  parts_->starting.withHostCredentials(env, segmentations, delegate);
}

void OrlanPlugin::start(const std::string& companyApiKey, const std::string& appId,
                        const std::string& appApiKey, const std::string& iosBundleId, Config::Environment env,
                        const Segmentations& segmentations, bool includeLegacyApiKeyHeader,
                        const Delegate& delegate) {
  const Turn turn = parts_->phone.main.enter();
  TransmissionAppCredentials credentials;
  credentials.companyApiKey = companyApiKey;
  credentials.appID = appId;
  credentials.appApiKey = appApiKey;
  credentials.iosBundleID = iosBundleId;
  credentials.includeLegacyApiKeyHeader = includeLegacyApiKeyHeader;
  parts_->starting.withAppCredentials(std::move(credentials), env, segmentations, delegate);
}

std::string OrlanPlugin::getNotificationStats() const {
  const Turn turn = parts_->phone.main.enter();
  return parts_->notificationStats.summary(parts_->phone.clock.now());
}

void OrlanPlugin::resetNotificationStats() {
  const Turn turn = parts_->phone.main.enter();
  parts_->logger.breadcrumb("📊 Resetting notification statistics");
  parts_->notificationStats = {};
  parts_->notificationStats.lastReportTime = parts_->phone.clock.now();
}

const json::Object& OrlanPlugin::notificationTelemetry() const {
  return parts_->telemetry;
}

void OrlanPlugin::Parts::count(std::string_view monitor, std::int64_t NotificationStats::*counter,
                               std::string_view activation) {
  const Turn turn = phone.main.enter();
  notificationStats.record(counter, activation);
  logger.breadcrumb(fmt::format("📊 Recorded {} notification: {} (Total: {})", monitor, activation,
                                notificationStats.totalNotifications));
}

void OrlanPlugin::recordFGNotification(std::string_view activation) {
  parts_->count("FG", &NotificationStats::fgNotifications, activation);
}

void OrlanPlugin::recordBGNotification(std::string_view activation) {
  parts_->count("BG", &NotificationStats::bgNotifications, activation);
}

const std::string& OrlanPlugin::storedApiKey() const {
  return parts_->starting.storedApiKey();
}

Config::Environment OrlanPlugin::storedEnv() const {
  return parts_->starting.storedEnv();
}

}  // namespace orlan
