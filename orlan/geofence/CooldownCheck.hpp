#pragma once

#include <cstdint>
#include <string_view>

#include "orlan/base/Time.hpp"
#include "orlan/geofence/CooldownStore.hpp"
#include "orlan/geofence/ExitCooldown.hpp"
#include "orlan/geofence/ReactionServices.hpp"

namespace orlan {

/// One monitor's check of the exit cooldown. Its start time is its construction. What was announced when is
/// only in the store: nothing else is decided by it. Main thread.
class CooldownCheck {
 public:
  /// `marker` opens each log line: "🔔 " or "🔔 BG ".
  CooldownCheck(const ReactionServices& services, std::string_view marker);

  /// Only "ON_EXIT" has a cooldown; every other activation is allowed and leaves no trace but a log line.
  bool allows(std::int64_t campaignId, std::string_view activation);

  /// Forgets what was announced, for both monitors.
  void clear();

 private:
  bool allowsExit(std::int64_t campaignId);

  Clock& clock_;
  Logger& logger_;
  CooldownStore store_;
  const std::string_view marker_;
  const TimePoint appStartTime_;
};

}  // namespace orlan
