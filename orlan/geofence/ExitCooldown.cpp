#include "orlan/geofence/ExitCooldown.hpp"

namespace orlan {

ExitCooldown ExitCooldown::decide(TimePoint now, TimePoint appStart, std::optional<TimePoint> storedStart,
                                  std::optional<TimePoint> lastAnnounced) {
  if (storedStart && appStart > *storedStart) return {Verdict::restarted, {}};
  if (!lastAnnounced) return {Verdict::allowed, {}};
  const Duration since = orlan::elapsed(*lastAnnounced, now);
  if (since < period) return {Verdict::denied, since};
  return {Verdict::allowed, {}};
}

}  // namespace orlan
