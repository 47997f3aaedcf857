#pragma once

#include "orlan/platform/NotificationCenter.hpp"

namespace orlan {

/// Receives the response to a tapped notification as it is; see `NotificationBridge`. Main thread.
class OrlanNotificationDelegate {
 public:
  virtual ~OrlanNotificationDelegate() = default;
  virtual void orlanDidReceive(const NotificationResponse& response) = 0;
};

}  // namespace orlan
