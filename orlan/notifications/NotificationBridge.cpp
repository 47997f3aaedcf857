#include "orlan/notifications/NotificationBridge.hpp"

#include <utility>

namespace orlan {

std::shared_ptr<OrlanNotificationDelegate> NotificationBridge::delegate() const {
  main_.assertCurrent();
  return delegate_.lock();
}

void NotificationBridge::setDelegate(std::weak_ptr<OrlanNotificationDelegate> delegate) {
  main_.assertCurrent();
  delegate_ = std::move(delegate);
}

void NotificationBridge::willPresent(const NotificationRequest& /*request*/,
                                     std::function<void(std::uint32_t)> completion) {
  using namespace notificationOptions;
  main_.assertCurrent();
  completion(banner | sound | badge);
}

void NotificationBridge::didReceive(const NotificationResponse& response, std::function<void()> completion) {
  // Held until the host has returned: it may let its delegate go inside the call.
  if (const auto host = delegate()) host->orlanDidReceive(response);
  completion();
}

}  // namespace orlan
