#include "orlan/notifications/NotificationPermissionManager.hpp"

#include "orlan/platform/MainGate.hpp"

namespace orlan {

/// The centre holds its delegate weakly, so the delegate is an object with shared ownership.
struct NotificationPermissionManager::Parts final : NotificationCenterDelegate {
  Parts(MainLoop& mainLoop, NotificationCenter& notificationCenter)
      : main(mainLoop), center(notificationCenter), gate(mainLoop) {}

  void willPresent(const NotificationRequest&, std::function<void(std::uint32_t)> completion) override {
    completion(notificationOptions::banner | notificationOptions::sound);
  }

  void askForStatus() {
    center.authorizationStatus([this, pass = gate.pass()](NotificationAuthorization answer) {
      pass([this, answer] { status.send(answer); });
    });
  }

  MainLoop& main;
  NotificationCenter& center;
  CurrentValue<NotificationAuthorization> status{NotificationAuthorization::notDetermined};
  MainGate gate;
};

NotificationPermissionManager::NotificationPermissionManager(MainLoop& main, NotificationCenter& center)
    : parts_(std::make_shared<Parts>(main, center)) {}

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

}  // namespace orlan
