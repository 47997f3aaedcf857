#pragma once

#include <memory>

#include "orlan/base/Subject.hpp"
#include "orlan/platform/Application.hpp"
#include "orlan/platform/Console.hpp"
#include "orlan/platform/NotificationCenter.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// Knows whether the person lets the application notify, and is the notification centre's delegate from start
/// on.
class NotificationPermissionManager {
 public:
  NotificationPermissionManager(MainLoop& main, NotificationCenter& center, Application& application,
                                SystemLog& systemLog);
  ~NotificationPermissionManager();

  static NotificationPermissionManager& shared();

  /// The latest known status; `notDetermined` until the first answer. Values may arrive on any thread.
  [[nodiscard]] CurrentValue<NotificationAuthorization>& statusPublisher();
  [[nodiscard]] NotificationAuthorization currentStatus() const;

  /// Becomes the centre's delegate on the main queue, then asks the centre for its settings and publishes
  /// them.
  void refresh();

  /// Asks the person for alerts, sounds and badges. The answer is published (authorized or denied); a yes
  /// also registers the application for remote notifications. An error is only written to the system log.
  void requestPermission();

 private:
  struct Parts;
  std::shared_ptr<Parts> parts_;
};

}  // namespace orlan
