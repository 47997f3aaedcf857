#include "orlan/platform/PolygonShape.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

namespace orlan {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

Polygon::LongitudeRange longitudesOf(std::span<const Coordinate> ring) {
  Polygon::LongitudeRange range{infinity, -infinity};
  if (ring.size() < 3) return {};
  for (const Coordinate& vertex : ring) {
    if (std::isnan(vertex.longitude)) continue;
    range.min = std::min(range.min, vertex.longitude);
    range.max = std::max(range.max, vertex.longitude);
  }
  return range.min < range.max ? range : Polygon::LongitudeRange{};
}

/// Whether rounding keeps the crossing with any meridian between the edge's ends, but for a little that
/// `slack` covers. Not where the divisor's constant can outweigh or cancel a falling edge's width.
bool isTame(Coordinate from, Coordinate to) {
  constexpr double most = 1e9;
  const auto small = [](double value) { return std::abs(value) < most; };  // false for not-a-number
  if (!small(from.latitude) || !small(from.longitude) || !small(to.latitude) || !small(to.longitude)) {
    return false;
  }
  const double width = from.longitude - to.longitude;
  return width >= 0.0 || width <= -1e-9;
}

/// How far beyond the edge's ends the computed crossing can lie: the constant stretches a falling edge by up
/// to 2.3e-7 of its height, the rest is rounding, underflow included.
double slack(Coordinate from, Coordinate to) {
  return 1e-6 * std::abs(from.latitude - to.latitude) +
         1e-14 * (std::abs(from.latitude) + std::abs(to.latitude)) + 1e-300;
}

Polygon::Box containmentBox(std::span<const Coordinate> ring) {
  Polygon::Box box{longitudesOf(ring), 0.0, 0.0};
  if (box.longitude.min == box.longitude.max) return box;
  double lowest = infinity;
  double highest = -infinity;
  Coordinate from = ring.back();
  for (const Coordinate& to : ring) {
    if (!isTame(from, to)) {
      lowest = -infinity;
      highest = infinity;
      break;
    }
    lowest = std::min(lowest, std::min(from.latitude, to.latitude) - slack(from, to));
    highest = std::max(highest, std::max(from.latitude, to.latitude) + slack(from, to));
    from = to;
  }
  box.minLatitude = lowest;
  box.maxLatitude = highest;
  return box;
}

Polygon::Box boxOfVertices(std::span<const Coordinate> ring) {
  Polygon::Box box{{infinity, -infinity}, infinity, -infinity};
  for (const Coordinate& vertex : ring) {
    if (!isOnGlobe(vertex)) continue;
    box.longitude.min = std::min(box.longitude.min, vertex.longitude);
    box.longitude.max = std::max(box.longitude.max, vertex.longitude);
    box.minLatitude = std::min(box.minLatitude, vertex.latitude);
    box.maxLatitude = std::max(box.maxLatitude, vertex.latitude);
  }
  return box;
}

Place meanOf(std::span<const Coordinate> ring) {
  Coordinate sum;
  for (const Coordinate& vertex : ring) {
    if (!isOnGlobe(vertex)) return Place(vertex);
    sum.latitude += vertex.latitude;
    sum.longitude += vertex.longitude;
  }
  const auto count = static_cast<double>(ring.size());
  return Place({sum.latitude / count, sum.longitude / count});  // of none: not a number
}

}  // namespace

Polygon::Shape::Shape(std::vector<Coordinate> ring)
    : vertices(std::move(ring)),
      box(containmentBox(vertices)),
      vertexBox(boxOfVertices(vertices)),
      centre(meanOf(vertices)),
      bins(vertices) {}

}  // namespace orlan
