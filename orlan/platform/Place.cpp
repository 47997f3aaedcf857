#include "orlan/platform/Place.hpp"

#include <cmath>
#include <limits>
#include <numbers>

namespace orlan {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

// 6399.6 km over 6335.4 km, and more than any rounding, here or in the geodesic: 6 mm.
constexpr double greatestRatio = 1.0102;
constexpr double arcMargin = 1e-9;

// With a sphere of this radius a distance is between 0.994 and 1.005 times the arc, and an arc is longer than
// its chord, by up to 1.1 % where the chord is half the radius. The factors below leave room beyond both.
constexpr double sphereRadius = 6371000.0;  // metres
constexpr double surelyAtLeast = 0.99;
constexpr double surelyAtMost = 1.02;
constexpr double longChord = 0.5 * sphereRadius;

double square(double value) {
  return value * value;
}

}  // namespace

Place::Place(Coordinate coordinate) : coordinate_(coordinate), measurable_(isOnGlobe(coordinate)) {
  if (!measurable_) return;
  constexpr double radians = std::numbers::pi / 180.0;
  const double latitude = coordinate.latitude * radians;
  const double longitude = std::remainder(coordinate.longitude, 360.0) * radians;
  direction_ = {std::cos(latitude) * std::cos(longitude), std::cos(latitude) * std::sin(longitude),
                std::sin(latitude)};
}

double squaredChord(const Place& a, const Place& b) {
  if (!a.measurable_ || !b.measurable_) return infinity;
  return square(a.direction_[0] - b.direction_[0]) + square(a.direction_[1] - b.direction_[1]) +
         square(a.direction_[2] - b.direction_[2]);
}

double surelyFartherThan(double squaredChord) {
  const double arc = 2.0 * std::asin(0.5 * std::sqrt(squaredChord));  // not a number for an infinite one
  const double farther = greatestRatio * arc + arcMargin;
  return farther < std::numbers::pi ? square(2.0 * std::sin(0.5 * farther)) : infinity;
}

std::partial_ordering compareDistance(const Place& a, const Place& b, double metres) {
  if (!a.measurable() || !b.measurable()) return std::partial_ordering::unordered;
  const double chord = sphereRadius * std::sqrt(squaredChord(a, b));
  if (surelyAtLeast * chord > metres) return std::partial_ordering::greater;
  if (chord < longChord && surelyAtMost * chord < metres) return std::partial_ordering::less;
  return distance(a.coordinate(), b.coordinate()) <=> metres;
}

}  // namespace orlan
