#pragma once

#include <atomic>
#include <functional>
#include <memory>

#include "orlan/base/Lazy.hpp"
#include "orlan/base/Subject.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/MainGate.hpp"
#include "orlan/platform/Platform.hpp"

namespace orlan {

class NotificationManager;

/// Knows whether the person lets the application notify, and is the notification centre's delegate from start
/// on: it logs and hands on to `NotificationManager` what the centre presents and what is tapped. Main thread
/// unless a line says otherwise.
///
/// Made with `std::make_shared`: the notification centre holds its delegate weakly.
class NotificationPermissionManager final
    : public NotificationCenterDelegate,
      public std::enable_shared_from_this<NotificationPermissionManager> {
 public:
  /// `manager` is first used when something is presented or tapped. Everything given outlives it.
  NotificationPermissionManager(const Platform& phone, Logger& logger, Lazy<NotificationManager>& manager);

  /// The installed library's, made at first use; lives until the library is uninstalled. Main thread.
  static NotificationPermissionManager& shared();

  /// The latest known status; `notDetermined` until the first answer. Subscribers must not count on the
  /// thread on which values arrive. `currentStatus` may be asked on any.
  [[nodiscard]] Publisher<NotificationAuthorization>& statusPublisher() { return statusSubject_; }
  [[nodiscard]] NotificationAuthorization currentStatus() const { return status_; }

  /// Becomes the centre's delegate on the main queue, then asks the centre for its settings and publishes
  /// them.
  void refresh();

  /// Asks the person for alerts, sounds and badges. The answer is published (authorized or denied); a yes
  /// also registers the application for remote notifications. An error is only written to the system log.
  void requestPermission();

  /// Has the notification handled, then shown as a banner with sound, without badge.
  void willPresent(const NotificationRequest& request,
                   std::function<void(std::uint32_t)> completion) override;
  void didReceive(const NotificationResponse& response, std::function<void()> completion) override;
  [[nodiscard]] std::string_view name() const override { return "NotificationPermissionManager"; }

 private:
  void publish(NotificationAuthorization status);
  void takeAnswer(const Result<bool>& answer);

  MainLoop& main_;
  NotificationCenter& center_;
  Application& application_;
  SystemLog& systemLog_;
  Logger& logger_;
  Lazy<NotificationManager>& manager_;
  std::atomic<NotificationAuthorization> status_ = NotificationAuthorization::notDetermined;
  CurrentValue<NotificationAuthorization> statusSubject_{NotificationAuthorization::notDetermined};
  MainGate gate_;
};

}  // namespace orlan
