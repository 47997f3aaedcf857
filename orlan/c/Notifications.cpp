#include "orlan/c/Notifications.hpp"

#include <utility>

#include "orlan/c/Values.hpp"

namespace orlan::c {

NotificationRequest from(const orlan_notification& given) {
  const auto in = tableFrom(&given, "notification");
  NotificationRequest request;
  request.identifier = text(in.identifier, "notification.identifier");
  request.delay = Duration(in.delay);
  NotificationContent& content = request.content;
  content.title = text(in.title, "notification.title");
  content.body = text(in.body, "notification.body");
  content.userInfo = jsonObject(in.user_info, "notification.user_info");
  content.defaultSound = in.default_sound;
  if (in.has_badge) content.badge = in.badge;
  content.subtitle = text(in.subtitle, "notification.subtitle");
  content.sound = optionalText(in.sound, "notification.sound");
  content.threadIdentifier = text(in.thread_identifier, "notification.thread_identifier");
  content.categoryIdentifier = text(in.category_identifier, "notification.category_identifier");
  content.targetContentIdentifier =
      text(in.target_content_identifier, "notification.target_content_identifier");
  content.launchImageName = text(in.launch_image_name, "notification.launch_image_name");
  content.attachments = in.attachments;
  return request;
}

LentNotification::LentNotification(const NotificationRequest& request)
    : userInfo_(json::print(request.content.userInfo)) {
  const NotificationContent& content = request.content;
  out_.struct_size = sizeof out_;
  out_.identifier = lent(request.identifier);
  out_.title = lent(content.title);
  out_.body = lent(content.body);
  out_.user_info = lent(userInfo_);
  out_.delay = request.delay.count();
  out_.default_sound = content.defaultSound;
  out_.has_badge = content.badge.has_value();
  out_.badge = content.badge.value_or(0);
  out_.subtitle = lent(content.subtitle);
  out_.sound = lent(content.sound);
  out_.thread_identifier = lent(content.threadIdentifier);
  out_.category_identifier = lent(content.categoryIdentifier);
  out_.target_content_identifier = lent(content.targetContentIdentifier);
  out_.launch_image_name = lent(content.launchImageName);
  out_.attachments = content.attachments;
}

}  // namespace orlan::c
