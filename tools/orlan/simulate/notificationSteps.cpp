// Notifications: what the host asks of the library about them, and what comes up or is tapped.
#include "tools/orlan/simulate/Stage.hpp"
#include "tools/orlan/simulate/keys.hpp"
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
  step.into(content.userInfo, "userInfo", readUserInfo);
  content.subtitle = step.string("subtitle", "");
  if (step.has("badge")) content.badge = step["badge"].integer();
  step.into(content.sound, "sound", &Item::string);
  content.threadIdentifier = step.string("threadIdentifier", "");
  content.categoryIdentifier = step.string("categoryIdentifier", "");
  return content;
}

/// Finds the notification that a step is about when it is played: its own, or one that the library scheduled.
using Find = std::function<std::optional<NotificationRequest>(Scene&)>;

Find readNotification(const Members& step) {
  step.excludes("delivered", keys::notification);
  if (const Item delivered = step["delivered"]; delivered.isThere()) {
    const std::int64_t number = delivered.integer();
    if (number < 0) delivered.expected("the number of a notification, from 0 on");
    return [number](Scene& scene) { return scene.scheduled(static_cast<std::size_t>(number)); };
  }
  return [request = NotificationRequest{step.string("identifier", "notification"), readContent(step)}](
             Scene&) { return request; };
}

Action readPresent(const Members& step, const Files&) {
  return [find = readNotification(step)](Stage& stage) {
    if (const auto request = find(stage)) stage.phone().notifications().present(*request);
  };
}

Action readTap(const Members& step, const Files&) {
  return ActOfAPerson(
      [find = readNotification(step), action = step.string("actionIdentifier", "default")](Scene& scene) {
        if (const auto request = find(scene)) scene.tap({*request, action});
      });
}

StepKind engagement(std::string_view name, void (NotificationManager::*track)(std::int64_t, std::int64_t)) {
  return {name, {"notificationID", "locationID"}, [track](const Members& call, const Files&) {
            return ActOfAPerson([track, notification = call["notificationID"].integer(),
                                 location = call["locationID"].integer()](Scene& scene) {
              ((*scene.services().notificationManager).*track)(notification, location);
            });
          }};
}

Action readTestNotification(const Members& call, const Files&) {
  return [info = readUserInfo(call["userInfo"])](Stage& stage) {
    stage.services().notificationManager->sendTestNotificationWithPayload(info);
  };
}

Action readSetDelegate(const Members& call, const Files&) {
  const bool bridge = call["to"].oneOf<bool>({{"NotificationManager", false}, {"NotificationBridge", true}});
  return [bridge](Stage& stage) {
    if (bridge) return stage.host().installBridge();
    stage.services().notificationManager->setAsNotificationDelegate();
  };
}

std::vector<std::string_view> withContent(std::vector<std::string_view> arguments) {
  arguments.insert(arguments.end(), keys::notification.begin(), keys::notification.end());
  return arguments;
}

}  // namespace

std::vector<StepKind> notificationSteps() {
  return {
      engagement("trackMediaView", &NotificationManager::trackMediaView),
      engagement("trackCTAEngagement", &NotificationManager::trackCTAEngagement),
      plainCall("sendTestNotification",
                [](Stage& s) { s.services().notificationManager->sendTestNotification(); }),
      {"sendTestNotificationWithPayload", {"userInfo"}, readTestNotification},
      plainCall("sendFirebaseStyleTestNotification",
                [](Stage& s) { s.services().notificationManager->sendFirebaseStyleTestNotification(); }),
      plainCall("clearLatest", [](Stage& s) { s.services().notificationManager->clearLatest(); }),
      {"setNotificationDelegate", {"to"}, readSetDelegate},
      {"present", withContent({"delivered"}), readPresent},
      {"tap", withContent({"delivered", "actionIdentifier"}), readTap},
  };
}

}  // namespace orlan::simulate
