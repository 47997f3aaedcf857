#pragma once

#include <cmath>

namespace orlan {

/// Degrees, latitude first. May be out of range or not finite (the backend's text may say "nan"): every
/// comparison, sort and clamp copes with that.
struct Coordinate {
  double latitude = 0.0;
  double longitude = 0.0;

  friend bool operator==(const Coordinate&, const Coordinate&) = default;
};

/// Whether distances to it exist: finite, its latitude at most 90 degrees.
[[nodiscard]] inline bool isOnGlobe(Coordinate coordinate) {
  return std::isfinite(coordinate.longitude) && std::abs(coordinate.latitude) <= 90.0;
}

/// Geodesic distance in metres on the WGS84 ellipsoid. Not-a-number when either coordinate is not on the
/// globe, so write comparisons such that not-a-number means "no".
[[nodiscard]] double distance(Coordinate a, Coordinate b);

}  // namespace orlan
