#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "orlan/backend/APIService.hpp"
#include "orlan/base/Lazy.hpp"
#include "orlan/base/Subject.hpp"
#include "orlan/notifications/OrlanNotificationDetails.hpp"
#include "orlan/notifications/QuestionLookup.hpp"
#include "orlan/platform/MainGate.hpp"
#include "orlan/platform/Platform.hpp"

namespace orlan {

/// Turns notifications that are presented or tapped into records for the host: reads their payload, looks
/// survey questions up, reports the delivery and publishes. Main thread; no start is needed. Handling ends
/// before the notification centre is answered.
///
/// Made with `std::make_shared`: the notification centre holds its delegate weakly.
class NotificationManager final : public NotificationCenterDelegate,
                                  public std::enable_shared_from_this<NotificationManager> {
 public:
  /// Everything given outlives it.
  NotificationManager(const Platform& phone, Logger& logger, Lazy<APIService>& api,
                      CampaignSource& campaigns);

  /// The installed library's, made at first use; lives until the library is uninstalled. Main thread.
  static NotificationManager& shared();

  /// The record published last, unless somebody set another or cleared it.
  [[nodiscard]] std::optional<OrlanNotificationDetails> latest() const { return latest_; }
  void setLatest(std::optional<OrlanNotificationDetails> details);
  void clearLatest();

  /// The current value first, then every change.
  [[nodiscard]] Publisher<std::optional<OrlanNotificationDetails>>& latestPublisher() {
    return latestSubject_;
  }

  /// Every record published after the subscription, each before it becomes `latest`. A notification that is
  /// presented and then tapped is published twice.
  [[nodiscard]] Publisher<OrlanNotificationDetails>& publisher() { return subject_; }

  /// Takes the place of whoever is the notification centre's delegate.
  void setAsNotificationDelegate();

  /// Each schedules a notification for a second from now; how that went is only logged.
  void sendTestNotification();
  void sendTestNotificationWithPayload(json::Object userInfo);
  void sendFirebaseStyleTestNotification();

  /// Reports what the person did with a notification. Identifiers go out as they are, -1 included.
  void trackCTAEngagement(std::int64_t notificationID, std::int64_t locationID);
  void trackMediaView(std::int64_t notificationID, std::int64_t locationID);
  void reportNotification(ActivityType activity, std::int64_t locationID, std::int64_t curatedNotificationID,
                          NotificationType type);

  /// Handles the notification, then has it shown as a banner, with sound and badge.
  void willPresent(const NotificationRequest& request,
                   std::function<void(std::uint32_t)> completion) override;
  void didReceive(const NotificationResponse& response, std::function<void()> completion) override;
  [[nodiscard]] std::string_view name() const override { return "NotificationManager"; }

 private:
  void logNotificationDiagnostics(const NotificationContent& content, std::string_view context);
  void handle(const NotificationContent& content);
  [[nodiscard]] OrlanNotificationDetails detailsOf(const NotificationContent& content);

  MainLoop& main_;
  NotificationCenter& center_;
  Clock& clock_;
  RandomSource& random_;
  Logger& logger_;
  Lazy<APIService>& api_;
  QuestionLookup questions_;
  Subject<OrlanNotificationDetails> subject_;
  std::optional<OrlanNotificationDetails> latest_;
  CurrentValue<std::optional<OrlanNotificationDetails>> latestSubject_;
  MainGate gate_;
};

}  // namespace orlan
