#include "orlan/notifications/NotificationPermissionManager.hpp"

#include "orlan/platform/MainGate.hpp"

namespace orlan {

/// The centre holds its delegate weakly, so the delegate is an object with shared ownership.
struct NotificationPermissionManager::Parts final : NotificationCenterDelegate {
  Parts(MainLoop& mainLoop, NotificationCenter& notificationCenter, Application& app, SystemLog& log)
      : main(mainLoop), center(notificationCenter), application(app), systemLog(log), gate(mainLoop) {}

  void willPresent(const NotificationRequest&, std::function<void(std::uint32_t)> completion) override {
    completion(notificationOptions::banner | notificationOptions::sound);
  }

  void askForStatus() {
    center.authorizationStatus([this, pass = gate.pass()](NotificationAuthorization answer) {
      pass([this, answer] { status.send(answer); });
    });
  }

  void askPerson() {
    using namespace notificationOptions;
    center.requestAuthorization(
        alert | sound | badge,
        [this, pass = gate.pass()](const Result<bool>& answer) { pass([this, answer] { take(answer); }); });
  }

  void take(const Result<bool>& answer) {
    if (!answer) return systemLog.write("[Orlan] Push-auth error: " + answer.error().description);
    status.send(*answer ? NotificationAuthorization::authorized : NotificationAuthorization::denied);
    if (*answer) application.registerForRemoteNotifications();
  }

  MainLoop& main;
  NotificationCenter& center;
  Application& application;
  SystemLog& systemLog;
  CurrentValue<NotificationAuthorization> status{NotificationAuthorization::notDetermined};
  MainGate gate;
};

NotificationPermissionManager::NotificationPermissionManager(MainLoop& main, NotificationCenter& center,
                                                             Application& application, SystemLog& systemLog)
    : parts_(std::make_shared<Parts>(main, center, application, systemLog)) {}

NotificationPermissionManager::~NotificationPermissionManager() = default;

CurrentValue<NotificationAuthorization>& NotificationPermissionManager::statusPublisher() {
  return parts_->status;
}

NotificationAuthorization NotificationPermissionManager::currentStatus() const {
  return parts_->status.value();
}

void NotificationPermissionManager::refresh() {
  parts_->main.assertCurrent();
  parts_->main.async([manager = std::weak_ptr(parts_)] {
    const auto parts = manager.lock();
    if (!parts) return;
    parts->center.setDelegate(parts);
    parts->askForStatus();
  });
}

void NotificationPermissionManager::requestPermission() {
  parts_->main.assertCurrent();
  parts_->askPerson();
}

}  // namespace orlan
