#pragma once

#include <string>

#include "orlan/c/types.h"
#include "orlan/platform/NotificationCenter.hpp"

namespace orlan::c {

/// A notification that came from the host.
[[nodiscard]] NotificationRequest from(const orlan_notification& notification);

/// A notification on its way to the host: lends from the request and from itself.
class LentNotification {
 public:
  explicit LentNotification(const NotificationRequest& request);
  LentNotification(const LentNotification&) = delete;
  LentNotification& operator=(const LentNotification&) = delete;

  [[nodiscard]] const orlan_notification* get() const { return &out_; }

 private:
  std::string userInfo_;
  orlan_notification out_{};
};

}  // namespace orlan::c
