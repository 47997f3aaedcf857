#pragma once

#include "orlan/platform/Coordinate.hpp"

namespace orlan {

/// An edge runs from one vertex of a ring to the next. These two expressions, operation by operation, are the
/// definition of "inside": a point is inside when an odd number of edges straddle its longitude and cross its
/// meridian further north. Every faster path evaluates them for each edge that could make a difference.
[[nodiscard]] inline bool straddles(Coordinate from, Coordinate to, double longitude) {
  return (to.longitude > longitude) != (from.longitude > longitude);
}

/// The latitude at which the edge's line has that longitude. The constant keeps the divisor of a short edge
/// away from zero and is always added, whatever the sign. For an edge that does not straddle it is any
/// number.
[[nodiscard]] inline double crossingLatitude(Coordinate from, Coordinate to, double longitude) {
  return (longitude - to.longitude) * (from.latitude - to.latitude) /
             ((from.longitude - to.longitude) + 0x1p-52) +
         to.latitude;
}

}  // namespace orlan
