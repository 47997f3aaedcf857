#pragma once

#include "orlan/platform/Coordinate.hpp"

namespace orlan {

/// Whether a ray from `point` towards greater latitudes crosses the edge from `from` to `to`. This
/// expression, operation by operation, is the definition of "inside": every faster path evaluates it for each
/// edge that could make a difference. The constant keeps the divisor of a short edge away from zero and is
/// always added, whatever the sign. Without branches, since which edges cross is as good as random.
[[nodiscard]] inline bool crosses(Coordinate from, Coordinate to, Coordinate point) {
  const double crossing = (point.longitude - to.longitude) * (from.latitude - to.latitude) /
                              ((from.longitude - to.longitude) + 0x1p-52) +
                          to.latitude;
  const bool straddles = (to.longitude > point.longitude) != (from.longitude > point.longitude);
  return straddles & (crossing > point.latitude);
}

}  // namespace orlan
