#include "orlan/notifications/NotificationPermissionManager.hpp"

#include <string>
#include <vector>

#include "orlan/base/text.hpp"
#include "orlan/notifications/NotificationManager.hpp"

namespace orlan {
namespace {

std::string keysOf(const json::Object& userInfo) {
  std::vector<std::string> keys;
  for (const auto& member : userInfo) keys.push_back(member.first);
  return text::joined(keys, ", ");
}

}  // namespace

NotificationPermissionManager::NotificationPermissionManager(const Platform& phone, Logger& logger,
                                                             Lazy<NotificationManager>& manager)
    : main_(phone.main),
      center_(phone.notifications),
      application_(phone.application),
      systemLog_(phone.systemLog),
      logger_(logger),
      manager_(manager),
      gate_(phone.main) {}

void NotificationPermissionManager::refresh() {
  const Turn turn = main_.enter();
  main_.async([self = weak_from_this()] {
    const auto manager = self.lock();
    if (!manager) return;
    manager->center_.setDelegate(manager);
    manager->center_.authorizationStatus(
        [&manager = *manager, pass = manager->gate_.pass()](NotificationAuthorization answer) {
          pass([&manager, answer] { manager.publish(answer); });
        });
  });
}

void NotificationPermissionManager::publish(NotificationAuthorization status) {
  status_ = status;
  statusSubject_.send(status);
}

void NotificationPermissionManager::requestPermission() {
  using namespace notificationOptions;
  const Turn turn = main_.enter();
  center_.requestAuthorization(alert | sound | badge,
                               [this, pass = gate_.pass()](const Result<bool>& answer) {
                                 pass([this, answer] { takeAnswer(answer); });
                               });
}

void NotificationPermissionManager::takeAnswer(const Result<bool>& answer) {
  if (!answer) return systemLog_.write("[Orlan] Push-auth error: " + answer.error().description);
  publish(*answer ? NotificationAuthorization::authorized : NotificationAuthorization::denied);
  if (*answer) application_.registerForRemoteNotifications();
}

void NotificationPermissionManager::willPresent(const NotificationRequest& request,
                                                std::function<void(std::uint32_t)> completion) {
  using namespace notificationOptions;
  const Turn turn = main_.enter();
  systemLog_.write("[Orlan] 🔔 NotificationPermissionManager.willPresent - Received foreground notification");
  logger_.breadcrumb("🔔 NotificationPermissionManager.willPresent - Received foreground notification");
  logger_.breadcrumb("🔔 NotificationPermissionManager.willPresent - Notification ID: " + request.identifier);
  logger_.breadcrumb("🔔 NotificationPermissionManager - Forwarding to NotificationManager.willPresent");
  manager_->willPresent(request, [](std::uint32_t) {});
  completion(banner | sound);
}

void NotificationPermissionManager::didReceive(const NotificationResponse& response,
                                               std::function<void()> completion) {
  const Turn turn = main_.enter();
  const std::string& action = response.actionIdentifier;
  const std::string& identifier = response.request.identifier;
  systemLog_.write(
      "[Orlan] 🔔 NotificationPermissionManager.didReceive - User tapped notification - Action: " + action);
  systemLog_.write("[Orlan] 🔔 NotificationPermissionManager.didReceive - Notification ID: " + identifier);
  logger_.breadcrumb("🔔 NotificationPermissionManager.didReceive - User tapped notification");
  logger_.breadcrumb("🔔 NotificationPermissionManager.didReceive - Notification ID: " + identifier);
  logger_.breadcrumb("🔔 NotificationPermissionManager - Action: " + action);
  logger_.breadcrumb("🔔 NotificationPermissionManager - UserInfo keys: " +
                     keysOf(response.request.content.userInfo));
  logger_.breadcrumb("🔔 NotificationPermissionManager - Forwarding to NotificationManager.didReceive");
  manager_->didReceive(response, [] {});
  logger_.breadcrumb("🔔 NotificationPermissionManager - Forward complete");
  systemLog_.write("[Orlan] 🔔 NotificationPermissionManager - Forward complete");
  completion();
}

}  // namespace orlan
