#include "phones/common/Place.hpp"

#include <cmath>
#include <numbers>

namespace orlan::phone {

namespace {

// A sphere that lies close to the ellipsoid. Along any short piece the ellipsoid's distance is between 0.994
// and 1.005 times the sphere's (its radii of curvature go from 6335 km to 6400 km), and an arc is longer than
// its chord, by up to 1.1 % where the chord is half the radius. The factors below leave room beyond both.
constexpr double sphereRadius = 6371000.0;  // metres
constexpr double surelyAtLeast = 0.99;
constexpr double surelyAtMost = 1.02;
constexpr double longChord = 0.5 * sphereRadius;

bool onTheGlobe(Coordinate coordinate) {
  return std::isfinite(coordinate.latitude) && std::isfinite(coordinate.longitude) &&
         std::abs(coordinate.latitude) <= 90.0;
}

}  // namespace

Place::Place(Coordinate coordinate) : coordinate_(coordinate), measurable_(onTheGlobe(coordinate)) {
  if (!measurable_) return;
  constexpr double radians = std::numbers::pi / 180.0;
  const double latitude = coordinate.latitude * radians;
  const double longitude = std::remainder(coordinate.longitude, 360.0) * radians;
  direction_ = {std::cos(latitude) * std::cos(longitude), std::cos(latitude) * std::sin(longitude),
                std::sin(latitude)};
}

std::partial_ordering compareDistance(const Place& a, const Place& b, double metres) {
  if (!a.measurable_ || !b.measurable_) return std::partial_ordering::unordered;
  const double dx = a.direction_[0] - b.direction_[0];
  const double dy = a.direction_[1] - b.direction_[1];
  const double dz = a.direction_[2] - b.direction_[2];
  const double chord = sphereRadius * std::sqrt(dx * dx + dy * dy + dz * dz);
  if (surelyAtLeast * chord > metres) return std::partial_ordering::greater;
  if (chord < longChord && surelyAtMost * chord < metres) return std::partial_ordering::less;
  return distance(a.coordinate_, b.coordinate_) <=> metres;
}

}  // namespace orlan::phone
