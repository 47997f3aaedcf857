#pragma once

#include "orlan/platform/NotificationCenter.hpp"

namespace orlan {

/// Receives the response to a tapped notification as it is; see `NotificationBridge`. Main thread.
class OrlanNotificationDelegate {
 public:
  virtual ~OrlanNotificationDelegate() = default;
  /// Called once for each tap, before the notification centre is told that it has been dealt with.
  virtual void orlanDidReceive(const NotificationResponse& response) = 0;
};

}  // namespace orlan
