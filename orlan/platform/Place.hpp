#pragma once

#include <array>
#include <compare>

#include "orlan/platform/Coordinate.hpp"

namespace orlan {

/// A coordinate prepared for many comparisons of distances: as a point of a unit sphere with the same
/// latitudes and longitudes, from which the geodesic distance to another is known to 1 % for a few
/// multiplications.
///
/// For a piece of any way on the ellipsoid is between 6335.4 km and 6399.6 km (its least and its greatest
/// radius of curvature: along the meridian at the equator, and at the poles) times as long as the same piece
/// on the unit sphere. So is every whole way, hence the shortest one, however far.
class Place {
 public:
  explicit Place(Coordinate coordinate);

  [[nodiscard]] Coordinate coordinate() const { return coordinate_; }

  /// Whether distances to it exist.
  [[nodiscard]] bool measurable() const { return measurable_; }

 private:
  friend double squaredChord(const Place& a, const Place& b);

  Coordinate coordinate_;
  bool measurable_;
  std::array<double, 3> direction_{};
};

/// The square of the straight way between the two points of the sphere; infinite when either is not
/// measurable.
[[nodiscard]] double squaredChord(const Place& a, const Place& b);

/// Of all places those with a squared chord above this are surely farther (geodesic distance) than any with
/// one up to `squaredChord`. Infinite when that can be said of none.
[[nodiscard]] double surelyFartherThan(double squaredChord);

/// `distance(a, b) <=> metres`, unordered when either is not measurable. Measures the geodesic only where a
/// chord cannot decide, which is the exception.
[[nodiscard]] std::partial_ordering compareDistance(const Place& a, const Place& b, double metres);

}  // namespace orlan
