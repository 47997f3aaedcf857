#include <algorithm>
#include <cmath>
#include <numbers>

#include "orlan/platform/Polygon.hpp"

namespace orlan {

namespace {

struct MapPoint {
  double x;
  double y;
};

/// Spherical Mercator in radians. A latitude beyond a pole counts as the pole's, whose image is far but
/// finite.
MapPoint project(Coordinate coordinate) {
  constexpr double radians = std::numbers::pi / 180.0;
  const double latitude = std::clamp(coordinate.latitude, -90.0, 90.0);
  return {coordinate.longitude * radians, std::asinh(std::tan(latitude * radians))};
}

/// Positive when `point` lies to the left of the line from `a` to `b`.
double side(MapPoint a, MapPoint b, MapPoint point) {
  return (b.x - a.x) * (point.y - a.y) - (point.x - a.x) * (b.y - a.y);
}

}  // namespace

bool isInside(Coordinate point, const Polygon& polygon) {
  const auto ring = polygon.coordinates();
  if (ring.empty()) return false;
  const MapPoint target = project(point);
  MapPoint from = project(ring.back());
  int winding = 0;
  for (const Coordinate& vertex : ring) {
    const MapPoint to = project(vertex);
    // A comparison with not-a-number is false, so an edge or a point without a place winds around nothing.
    if (from.y <= target.y && to.y > target.y && side(from, to, target) > 0.0) ++winding;
    if (to.y <= target.y && from.y > target.y && side(from, to, target) < 0.0) --winding;
    from = to;
  }
  return winding != 0;
}

}  // namespace orlan
