// Notifications: what the host asks of the library about them, and what comes up or is tapped.
#include "tools/orlan/simulate/Caller.hpp"
#include "tools/orlan/simulate/stepTable.hpp"

namespace orlan::simulate {
namespace {

json::Object readUserInfo(const Item& item) {
  if (const json::Object* info = item.value().object()) return *info;
  item.expected("an object");
  return {};
}

NotificationContent readContent(const Members& step) {
  NotificationContent content;
  content.title = step.string("title", "");
  content.body = step.string("body", "");
  if (const Item info = step["userInfo"]; info.isThere()) content.userInfo = readUserInfo(info);
  content.subtitle = step.string("subtitle", "");
  if (const Item badge = step["badge"]; badge.isThere()) content.badge = badge.integer();
  if (const Item sound = step["sound"]; sound.isThere()) content.sound = sound.string();
  content.threadIdentifier = step.string("threadIdentifier", "");
  content.categoryIdentifier = step.string("categoryIdentifier", "");
  return content;
}

step::Notify readNotify(const Members& step) {
  step.excludes("delivered", {"identifier", "title", "body", "userInfo", "subtitle", "badge", "sound",
                              "threadIdentifier", "categoryIdentifier"});
  if (const Item delivered = step["delivered"]; delivered.isThere()) {
    const std::int64_t number = delivered.integer();
    if (number < 0) delivered.expected("the number of a notification, from 0 on");
    return {step::Delivered{static_cast<std::size_t>(number)}, std::nullopt};
  }
  return {NotificationRequest{step.string("identifier", "notification"), readContent(step)}, std::nullopt};
}

Action readPresent(const Members& step, const Files&) {
  return readNotify(step);
}

Action readTap(const Members& step, const Files&) {
  step::Notify tap = readNotify(step);
  tap.tappedAction = step.string("actionIdentifier", "default");
  return tap;
}

using Track = void (NotificationManager::*)(std::int64_t notificationID, std::int64_t locationID);

StepKind engagement(std::string_view name, Track track) {
  return {name, {"notificationID", "locationID"}, [track](const Members& call, const Files&) {
            return step::Call{[track, notification = call["notificationID"].integer(),
                               location = call["locationID"].integer()](Caller& caller) {
              ((*caller.services().notificationManager).*track)(notification, location);
            }};
          }};
}

Action readTestNotification(const Members& call, const Files&) {
  return step::Call{[info = readUserInfo(call["userInfo"])](Caller& caller) {
    caller.services().notificationManager->sendTestNotificationWithPayload(info);
  }};
}

Action readSetDelegate(const Members& call, const Files&) {
  const bool bridge = call["to"].oneOf<bool>({{"NotificationManager", false}, {"NotificationBridge", true}});
  return step::Call{[bridge](Caller& caller) {
    if (bridge) return caller.host().installBridge();
    caller.services().notificationManager->setAsNotificationDelegate();
  }};
}

}  // namespace

std::vector<StepKind> notificationSteps() {
  return {
      engagement("trackMediaView", &NotificationManager::trackMediaView),
      engagement("trackCTAEngagement", &NotificationManager::trackCTAEngagement),
      plainCall("sendTestNotification",
                [](Caller& c) { c.services().notificationManager->sendTestNotification(); }),
      {"sendTestNotificationWithPayload", {"userInfo"}, readTestNotification},
      plainCall("sendFirebaseStyleTestNotification",
                [](Caller& c) { c.services().notificationManager->sendFirebaseStyleTestNotification(); }),
      plainCall("clearLatest", [](Caller& c) { c.services().notificationManager->clearLatest(); }),
      {"setNotificationDelegate", {"to"}, readSetDelegate},
      {"present",
       {"delivered", "identifier", "title", "body", "userInfo", "subtitle", "badge", "sound",
        "threadIdentifier", "categoryIdentifier"},
       readPresent},
      {"tap",
       {"delivered", "identifier", "title", "body", "userInfo", "subtitle", "badge", "sound",
        "threadIdentifier", "categoryIdentifier", "actionIdentifier"},
       readTap},
  };
}

}  // namespace orlan::simulate
