#pragma once

#include "orlan/base/Time.hpp"

namespace orlan {

/// `to - from`, or the end of the range where that would overflow: a stored time may be anything.
[[nodiscard]] constexpr Duration elapsed(TimePoint from, TimePoint to) {
  const Duration since = from.time_since_epoch();
  const Duration until = to.time_since_epoch();
  if (since < Duration::zero() && until > Duration::max() + since) return Duration::max();
  if (since > Duration::zero() && until < Duration::min() + since) return Duration::min();
  return until - since;
}

}  // namespace orlan
