#pragma once

#include <array>
#include <compare>

#include "orlan/platform/Coordinate.hpp"

namespace orlan::phone {

/// A coordinate prepared for many comparisons of distances with limits.
class Place {
 public:
  explicit Place(Coordinate coordinate);

  /// Whether distances to it exist: finite, and its latitude on the globe.
  [[nodiscard]] bool measurable() const { return measurable_; }

 private:
  friend std::partial_ordering compareDistance(const Place& a, const Place& b, double metres);

  Coordinate coordinate_;
  bool measurable_;
  std::array<double, 3> direction_{};  // unit vector on the sphere
};

/// `distance(a, b) <=> metres`, unordered when either is not measurable. Measures the geodesic only where a
/// chord cannot decide, which is the exception.
[[nodiscard]] std::partial_ordering compareDistance(const Place& a, const Place& b, double metres);

}  // namespace orlan::phone
