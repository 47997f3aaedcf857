#include "orlan/c/notifications.h"

#include "orlan/c/Host.hpp"
#include "orlan/c/Notifications.hpp"
#include "orlan/c/Streams.hpp"
#include "orlan/c/Values.hpp"
#include "orlan/surveys/SurveyFields.hpp"

namespace {

using namespace orlan::c;
using orlan::OrlanNotificationDetails;

void emit(orlan_details_handler handler, void* context, const OrlanNotificationDetails& details) {
  std::optional<std::string> questions;
  if (details.questions()) questions = orlan::json::print(orlan::json::encode(*details.questions()));
  orlan_notification_details out{};
  out.struct_size = sizeof out;
  out.id = lent(details.id());
  out.headline = lent(details.headline());
  out.body = lent(details.body());
  out.media_type = lent(details.mediaType());
  out.media_url = lent(details.mediaURL());
  out.cta_label = lent(details.ctaLabel());
  out.cta_url = lent(details.ctaURL());
  out.notification_id = details.notifID();
  out.location_id = details.locationID();
  out.questions = lent(questions);
  out.completion_message = lent(details.completionMessage());
  call(handler, context, static_cast<const orlan_notification_details*>(&out));
}

void emit(orlan_details_handler handler, void* context,
          const std::optional<OrlanNotificationDetails>& details) {
  if (details) return emit(handler, context, *details);
  call(handler, context, static_cast<const orlan_notification_details*>(nullptr));
}

OrlanNotificationDetails detailsFrom(const orlan_notification_details& given) {
  const auto in = tableFrom(&given, "details");
  OrlanNotificationDetails::Content content{
      .headline = std::string(text(in.headline, "headline")),
      .body = std::string(text(in.body, "body")),
      .mediaType = optionalText(in.media_type, "media_type"),
      .mediaURL = optionalText(in.media_url, "media_url"),
      .ctaLabel = optionalText(in.cta_label, "cta_label"),
      .ctaURL = optionalText(in.cta_url, "cta_url"),
      .notifID = in.notification_id,
      .locationID = in.location_id,
      .questions = std::nullopt,
      .completionMessage = optionalText(in.completion_message, "completion_message")};
  if (const auto questions = optionalText(in.questions, "questions")) {
    auto decoded = orlan::json::decodeText<std::vector<orlan::SurveyQuestion>>(*questions);
    if (!decoded) throw Misuse{ORLAN_INVALID_ARGUMENT, "questions: " + decoded.error().description};
    content.questions = std::move(decoded).value();
  }
  return OrlanNotificationDetails(std::move(content));
}

class Bridge final : public orlan::OrlanNotificationDelegate {
 public:
  explicit Bridge(const orlan_notification_delegate& table) : table_(table) {}
  void orlanDidReceive(const orlan::NotificationResponse& response) override {
    const LentNotification out(response.request);
    call(table_.did_receive, table_.context, out.get(), lent(response.actionIdentifier));
  }

 private:
  const orlan_notification_delegate table_;
};

orlan::NotificationManager& manager() {
  return *Host::services().notificationManager;
}

}  // namespace

orlan_status orlan_subscribe_notifications(orlan_details_handler handler, void* context,
                                           orlan_subscription** subscription) {
  return subscribed<OrlanNotificationDetails>(
      __func__, handler != nullptr, subscription, [] { return std::ref(manager().publisher()); },
      [=](const OrlanNotificationDetails& details) { emit(handler, context, details); });
}

orlan_status orlan_subscribe_latest_notification(orlan_details_handler handler, void* context,
                                                 orlan_subscription** subscription) {
  using Latest = std::optional<OrlanNotificationDetails>;
  return subscribed<Latest>(
      __func__, handler != nullptr, subscription, [] { return std::ref(manager().latestPublisher()); },
      [=](const Latest& details) { emit(handler, context, details); });
}

orlan_status orlan_latest_notification(orlan_details_handler handler, void* context) {
  return onMain(__func__, [&](Host&) {
    if (handler == nullptr) throw Misuse{ORLAN_INVALID_ARGUMENT, "handler is NULL"};
    emit(handler, context, manager().latest());
  });
}

orlan_status orlan_clear_latest_notification(void) {
  return onMain(__func__, [](Host&) { manager().clearLatest(); });
}

orlan_status orlan_set_latest_notification(const orlan_notification_details* details) {
  return onMain(__func__, [&](Host&) {
    manager().setLatest(details == nullptr ? std::nullopt : std::optional(detailsFrom(*details)));
  });
}

orlan_status orlan_track_cta_engagement(int64_t notification_id, int64_t location_id) {
  return onMain(__func__, [&](Host&) { manager().trackCTAEngagement(notification_id, location_id); });
}

orlan_status orlan_track_media_view(int64_t notification_id, int64_t location_id) {
  return onMain(__func__, [&](Host&) { manager().trackMediaView(notification_id, location_id); });
}

orlan_status orlan_report_notification(int64_t activity, int64_t location_id, int64_t notification_id,
                                       int64_t about) {
  return onMain(__func__, [&](Host&) {
    const auto what = orlan::fromRawValue<orlan::ActivityType>(activity);
    const auto type = orlan::fromRawValue<orlan::NotificationType>(about);
    if (!what || !type) throw Misuse{ORLAN_INVALID_ARGUMENT, "there is no such activity"};
    manager().reportNotification(*what, location_id, notification_id, *type);
  });
}

orlan_status orlan_send_test_notification(void) {
  return onMain(__func__, [](Host&) { manager().sendTestNotification(); });
}

orlan_status orlan_send_test_notification_with_payload(orlan_string user_info) {
  return onMain(__func__, [&](Host&) {
    manager().sendTestNotificationWithPayload(jsonObject(user_info, "user_info"));
  });
}

orlan_status orlan_send_firebase_style_test_notification(void) {
  return onMain(__func__, [](Host&) { manager().sendFirebaseStyleTestNotification(); });
}

orlan_status orlan_handle_notifications(void) {
  return onMain(__func__, [](Host&) { manager().setAsNotificationDelegate(); });
}

orlan_status orlan_bridge_set_delegate(const orlan_notification_delegate* delegate) {
  return onMain(__func__, [&](Host& host) {
    host.bridgeDelegate = delegateFrom<Bridge>(delegate);
    Host::services().notificationBridge->setDelegate(host.bridgeDelegate);
  });
}

orlan_status orlan_bridge_notifications(void) {
  return onMain(__func__, [](Host& host) {
    host.platform.notifications.setDelegate(Host::services().notificationBridge->weak_from_this());
  });
}

orlan_status orlan_refresh_push_authorization(void) {
  return onMain(__func__, [](Host&) { Host::services().notificationPermission->refresh(); });
}
