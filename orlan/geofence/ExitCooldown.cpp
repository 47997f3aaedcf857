#include "orlan/geofence/ExitCooldown.hpp"

namespace orlan {
namespace {

/// `now - then`; a stored time may lie so far in the past that the plain difference would overflow.
Duration since(TimePoint then, TimePoint now) {
  const Duration age = now.time_since_epoch();
  const Duration base = then.time_since_epoch();
  if (base < Duration::zero() && age > Duration::max() + base) return Duration::max();
  if (base > Duration::zero() && age < Duration::min() + base) return Duration::min();
  return age - base;
}

}  // namespace

ExitCooldown ExitCooldown::decide(TimePoint now, TimePoint appStart, std::optional<TimePoint> storedStart,
                                  std::optional<TimePoint> lastAnnounced) {
  if (storedStart && appStart > *storedStart) return {Verdict::restarted, {}};
  if (!lastAnnounced) return {Verdict::allowed, {}};
  const Duration elapsed = since(*lastAnnounced, now);
  if (elapsed < period) return {Verdict::denied, elapsed};
  return {Verdict::allowed, {}};
}

}  // namespace orlan
