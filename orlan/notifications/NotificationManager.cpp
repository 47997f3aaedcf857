#include "orlan/notifications/NotificationManager.hpp"

#include <fmt/format.h>

#include <utility>
#include <vector>

#include "orlan/notifications/ReceivedPayload.hpp"
#include "orlan/notifications/diagnostics.hpp"
#include "orlan/notifications/testNotifications.hpp"

namespace orlan {

NotificationManager::NotificationManager(const Platform& phone, Logger& logger, Lazy<APIService>& api,
                                         CampaignSource& campaigns)
    : main_(phone.main),
      center_(phone.notifications),
      clock_(phone.clock),
      random_(phone.random),
      logger_(logger),
      api_(api),
      questions_(logger, campaigns),
      gate_(phone.main) {
  logger_.breadcrumb("🔧 NotificationManager ready");
}

void NotificationManager::setLatest(std::optional<OrlanNotificationDetails> details) {
  const Turn turn = main_.enter();
  latest_ = std::move(details);
  latestSubject_.send(latest_);
}

void NotificationManager::clearLatest() {
  const Turn turn = main_.enter();
  setLatest(std::nullopt);
  logger_.breadcrumb("🔔 Cleared latest notification");
}

void NotificationManager::setAsNotificationDelegate() {
  const Turn turn = main_.enter();
  center_.setDelegate(weak_from_this());
  logger_.breadcrumb("🔔 NotificationManager set as UNUserNotificationCenter delegate");
  const auto current = center_.delegate();
  if (current.get() == this) {
    logger_.breadcrumb("✅ NotificationManager confirmed as delegate");
  } else {
    logger_.breadcrumb(fmt::format("❌ NotificationManager NOT set as delegate - current: {}",
                                   current ? current->name() : "nil"));
  }
}

void NotificationManager::sendTestNotification() {
  const Turn turn = main_.enter();
  logger_.breadcrumb("🔔 Sending basic test notification");
  sendTestNotificationWithPayload(testNotifications::basicPayload());
}

void NotificationManager::sendFirebaseStyleTestNotification() {
  const Turn turn = main_.enter();
  logger_.breadcrumb("🔔 Sending Firebase-style test notification");
  sendTestNotificationWithPayload(testNotifications::pushStylePayload(clock_.now()));
}

void NotificationManager::sendTestNotificationWithPayload(json::Object userInfo) {
  const Turn turn = main_.enter();
  logger_.breadcrumb("🔔 Sending test notification with custom payload");
  const auto note = [this](const Result<void>& outcome) {
    if (!outcome) return logger_.log("Test notification error: " + outcome.error().description);
    logger_.breadcrumb("🔔 Test notification scheduled successfully");
  };
  center_.add(
      testNotifications::request(std::move(userInfo), random_),
      [note, pass = gate_.pass()](const Result<void>& outcome) { pass([note, outcome] { note(outcome); }); });
}

void NotificationManager::trackCTAEngagement(std::int64_t notificationID, std::int64_t locationID) {
  const Turn turn = main_.enter();
  logger_.breadcrumb(fmt::format("🔗 Tracking CTA engagement - notificationID: {}", notificationID));
  reportNotification(ActivityType::ctaEngagement, locationID, notificationID, NotificationType::notification);
}

void NotificationManager::trackMediaView(std::int64_t notificationID, std::int64_t locationID) {
  const Turn turn = main_.enter();
  logger_.breadcrumb(fmt::format("📺 Tracking media view - notificationID: {}", notificationID));
  reportNotification(ActivityType::mediaViewed, locationID, notificationID, NotificationType::notification);
}

void NotificationManager::reportNotification(ActivityType activity, std::int64_t locationID,
                                             std::int64_t curatedNotificationID, NotificationType type) {
  const Turn turn = main_.enter();
  logger_.breadcrumb(fmt::format("📊 Reporting notification activity: {}", wireName(activity)));
  api_->reportActivity(activity, locationID, curatedNotificationID, type);
}

void NotificationManager::willPresent(const NotificationRequest& request,
                                      std::function<void(std::uint32_t)> completion) {
  using namespace notificationOptions;
  const Turn turn = main_.enter();
  logger_.breadcrumb("🔔 willPresent notification - identifier: " + request.identifier);
  logNotificationDiagnostics(request.content, "willPresent");
  handle(request.content);
  completion(banner | sound | badge);
}

void NotificationManager::didReceive(const NotificationResponse& response, std::function<void()> completion) {
  const Turn turn = main_.enter();
  logger_.breadcrumb("🔔 didReceive notification response - identifier: " + response.request.identifier);
  logNotificationDiagnostics(response.request.content, "didReceive");
  handle(response.request.content);
  completion();
}

void NotificationManager::logNotificationDiagnostics(const NotificationContent& content,
                                                     std::string_view context) {
  for (const auto& block : diagnostics::received(content, context)) logger_.breadcrumb(block);
}

void NotificationManager::handle(const NotificationContent& content) {
  logger_.breadcrumb("🔔 NotificationManager.handle() - Processing notification");
  const auto details = detailsOf(content);
  logger_.breadcrumb(diagnostics::processed(details));
  reportNotification(ActivityType::notificationDelivered, details.locationID(), details.notifID(),
                     NotificationType::notification);
  logger_.breadcrumb(fmt::format("📤 Publishing tapped notif {}", details.notifID()));
  subject_.send(details);
  setLatest(details);
}

OrlanNotificationDetails NotificationManager::detailsOf(const NotificationContent& content) {
  const auto payload = ReceivedPayload::parse(content.userInfo);
  if (const auto& nested = payload.nested) {
    logger_.breadcrumb(fmt::format("🔔 Extracted from notification_data: notifID={}, mediaURL={}, type={}",
                                   nested->notifID, nested->mediaURL.value_or("nil"),
                                   nested->mediaType.value_or("nil")));
  }
  return OrlanNotificationDetails({.headline = content.title,
                                   .body = content.body,
                                   .mediaType = payload.mediaType,
                                   .mediaURL = payload.mediaURL,
                                   .ctaLabel = payload.ctaLabel,
                                   .ctaURL = payload.ctaURL,
                                   .notifID = payload.notifID,
                                   .locationID = payload.locationID,
                                   .questions = questions_.find(content.userInfo, payload.notifID),
                                   .completionMessage = payload.completionMessage},
                                  random_);
}

}  // namespace orlan
