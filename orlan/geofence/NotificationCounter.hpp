#pragma once

#include <string_view>

namespace orlan {

/// All that the monitors know of the facade: it counts what they post. Main thread.
class NotificationCounter {
 public:
  virtual ~NotificationCounter() = default;
  virtual void recordFGNotification(std::string_view activation) = 0;
  virtual void recordBGNotification(std::string_view activation) = 0;
};

}  // namespace orlan
