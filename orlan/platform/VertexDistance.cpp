#include "orlan/platform/VertexDistance.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orlan {

namespace {

constexpr double equatorialRadius = 6378137.0;  // WGS84, metres
constexpr double flattening = 1.0 / 298.257223563;
constexpr double squaredEccentricity = flattening * (2.0 - flattening);
constexpr double radiansPerDegree = std::numbers::pi / 180.0;

/// No degree of latitude is shorter, metres: the curvature along a meridian is greatest at the equator.
constexpr double shortestLatitudeDegree = equatorialRadius * (1.0 - squaredEccentricity) * radiansPerDegree;

constexpr double largest = 100'000.0;  // metres; beyond, the bounds would be too loose to be worth it
constexpr double polewards = 89.9;     // degrees; beyond, a parallel is too short to bound anything

struct Degree {
  double alongMeridian;
  double alongParallel;
};

/// Metres a degree at a latitude.
Degree degreeAt(double latitude) {
  const double sine = std::sin(latitude * radiansPerDegree);
  const double cosine = std::cos(latitude * radiansPerDegree);
  const double bulge = 1.0 - squaredEccentricity * sine * sine;
  const double normal = equatorialRadius / std::sqrt(bulge) * radiansPerDegree;
  return {normal * (1.0 - squaredEccentricity) / bulge, normal * cosine};
}

double square(double value) {
  return value * value;
}

}  // namespace

Vicinity::Vicinity(Coordinate point, double metres) : point_(point), metres_(metres) {
  const bool onTheGround = std::isfinite(point.longitude) && std::abs(point.latitude) <= 90.0;
  if (!onTheGround || !(metres >= 0.0)) return;
  const double reach = metres + (1e-6 + 1e-9 * metres);  // more than any rounding, here or in the geodesic
  latitudeReach_ = reach / shortestLatitudeDegree;
  south_ = point.latitude - latitudeReach_;
  north_ = point.latitude + latitudeReach_;
  if (metres <= largest && std::abs(point.latitude) + latitudeReach_ <= polewards) boundLongitudes(reach);
}

/// Whoever goes at most `metres` from the point stays between two parallels. There, a way is at least as long
/// as with the shortest degrees found between them and the direct one in degrees at most as long as with the
/// longest. A degree along a meridian is shortest at the lowest latitude, one along a parallel at the
/// highest.
void Vicinity::boundLongitudes(double reach) {
  const double away = std::abs(point_.latitude);
  const Degree low = degreeAt(std::max(0.0, away - latitudeReach_));
  const Degree high = degreeAt(away + latitudeReach_);
  bounded_ = true;
  meridian_ = {low.alongMeridian, high.alongMeridian};
  parallel_ = {high.alongParallel, low.alongParallel};
  longitudeReach_ = reach / parallel_.shortest;
  west_ = point_.longitude - longitudeReach_;
  east_ = point_.longitude + longitudeReach_;
  farWest_ = point_.longitude - 180.0;
  farEast_ = point_.longitude + 180.0;
  squareOutside_ = square(reach);
  const double inner = metres_ - (reach - metres_);
  if (inner > 0.0) squareInside_ = square(inner);
}

bool Vicinity::contains(Coordinate vertex) const {
  const double north = std::abs(vertex.latitude - point_.latitude);
  if (!(north <= latitudeReach_)) return false;  // not-a-number is nowhere
  const double east = std::abs(vertex.longitude - point_.longitude);
  if (bounded_ && east <= 180.0) {
    if (east > longitudeReach_) return false;
    if (square(meridian_.shortest * north) + square(parallel_.shortest * east) > squareOutside_) return false;
    if (square(meridian_.longest * north) + square(parallel_.longest * east) <= squareInside_) return true;
  }
  return distance(point_, vertex) <= metres_;
}

}  // namespace orlan
