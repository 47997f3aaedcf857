#pragma once

#include <functional>
#include <memory>

#include "orlan/notifications/OrlanNotificationDelegate.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// For hosts that want the raw response of a tapped notification: a delegate for the notification centre that
/// hands it on, and parses, reports and logs nothing. A host installs it itself, instead of what start
/// installed:
///
///     center.setDelegate(NotificationBridge::shared().weak_from_this());
///
/// Main thread. Made with `std::make_shared`: the notification centre holds its delegate weakly.
class NotificationBridge final : public NotificationCenterDelegate,
                                 public std::enable_shared_from_this<NotificationBridge> {
 public:
  explicit NotificationBridge(MainLoop& main) : main_(main) {}

  /// The installed library's, made at first use; lives until the library is uninstalled. Main thread.
  static NotificationBridge& shared();

  /// Held weakly.
  [[nodiscard]] std::shared_ptr<OrlanNotificationDelegate> delegate() const;
  void setDelegate(std::weak_ptr<OrlanNotificationDelegate> delegate);

  /// Has every notification shown as a banner, with sound and badge.
  void willPresent(const NotificationRequest& request,
                   std::function<void(std::uint32_t)> completion) override;
  void didReceive(const NotificationResponse& response, std::function<void()> completion) override;
  [[nodiscard]] std::string_view name() const override { return "NotificationBridge"; }

 private:
  MainLoop& main_;
  std::weak_ptr<OrlanNotificationDelegate> delegate_;
};

}  // namespace orlan
