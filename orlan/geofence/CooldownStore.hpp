#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "orlan/base/Time.hpp"
#include "orlan/platform/KeyValueStore.hpp"

namespace orlan {

/// The keys of the exit cooldown in the key-value store.
namespace cooldownKeys {
inline constexpr std::string_view appStartTime = "Orlan_AppStartTime";
inline constexpr std::string_view lastNotificationPrefix = "Orlan_LastNotification_";

/// "Orlan_LastNotification_42_ON_EXIT"
[[nodiscard]] std::string lastNotification(std::int64_t campaignId, std::string_view activation);
}  // namespace cooldownKeys

/// What is kept of the exit cooldown: one store for both monitors, so that an exit that one of them announced
/// keeps the other quiet too. Times are the JSON text of the seconds since 2001, as bytes; anything else that
/// stands under a key counts as absent. Any thread.
class CooldownStore {
 public:
  explicit CooldownStore(KeyValueStore& store) : store_(store) {}

  /// When the monitor that checked last came to life.
  [[nodiscard]] std::optional<TimePoint> appStartTime() const;
  void setAppStartTime(TimePoint time);

  /// When a notification of that activation was last allowed.
  [[nodiscard]] std::optional<TimePoint> lastNotification(std::int64_t campaignId,
                                                          std::string_view activation) const;
  void setLastNotification(std::int64_t campaignId, std::string_view activation, TimePoint time);
  void removeLastNotification(std::int64_t campaignId, std::string_view activation);

  /// Forgets every campaign's last notification; the start time stays.
  void clear();

 private:
  KeyValueStore& store_;
};

}  // namespace orlan
