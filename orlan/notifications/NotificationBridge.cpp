#include "orlan/notifications/NotificationBridge.hpp"

#include <utility>

namespace orlan {

std::shared_ptr<OrlanNotificationDelegate> NotificationBridge::delegate() const {
  const Turn turn = main_.enter();
  return delegate_.lock();
}

void NotificationBridge::setDelegate(std::weak_ptr<OrlanNotificationDelegate> delegate) {
  const Turn turn = main_.enter();
  delegate_ = std::move(delegate);
}

void NotificationBridge::willPresent(const NotificationRequest& /*request*/,
                                     std::function<void(std::uint32_t)> completion) {
  using namespace notificationOptions;
  const Turn turn = main_.enter();
  completion(banner | sound | badge);
}

void NotificationBridge::didReceive(const NotificationResponse& response, std::function<void()> completion) {
  const Turn turn = main_.enter();
  // Held until the host has returned: it may let its delegate go inside the call.
  if (const auto host = delegate()) host->orlanDidReceive(response);
  completion();
}

}  // namespace orlan
