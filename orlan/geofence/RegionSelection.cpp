#include "orlan/geofence/RegionSelection.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace orlan::regionSelection {
namespace {

bool isPlace(Coordinate coordinate) {
  return std::isfinite(coordinate.longitude) && std::abs(coordinate.latitude) <= 90.0;
}

std::optional<Coordinate> centreOf(std::span<const Coordinate> vertices) {
  Coordinate sum;
  for (const Coordinate& vertex : vertices) {
    if (!isPlace(vertex)) return std::nullopt;
    sum.latitude += vertex.latitude;
    sum.longitude += vertex.longitude;
  }
  const auto count = static_cast<double>(vertices.size());
  const Coordinate centre{sum.latitude / count, sum.longitude / count};
  return isPlace(centre) ? std::optional(centre) : std::nullopt;
}

/// The greatest finite double when there is none.
double distanceToCentre(Coordinate from, const Polygon& polygon) {
  const auto centre = centreOf(polygon.coordinates());
  const double metres = centre ? distance(from, *centre) : 0.0;
  return centre && std::isfinite(metres) ? metres : std::numeric_limits<double>::max();
}

}  // namespace

std::optional<Circle> circleForVertices(std::span<const Coordinate> vertices) {
  const auto centre = centreOf(vertices);
  if (!centre) return std::nullopt;
  double radius = 0.0;
  for (const Coordinate& vertex : vertices) radius = std::max(radius, distance(*centre, vertex));
  return Circle{*centre, radius};
}

double clampedRadius(double radius) {
  if (!(radius > 100.0)) return 100.0;
  return radius > 1000.0 ? 1000.0 : radius;
}

std::vector<CampaignPolygon> sortedByProximity(const std::vector<CampaignPolygon>& polygons,
                                               Coordinate from) {
  std::vector<double> distances;
  distances.reserve(polygons.size());
  for (const auto& entry : polygons) distances.push_back(distanceToCentre(from, entry.polygon));
  std::vector<std::size_t> order(polygons.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return distances[a] < distances[b]; });
  std::vector<CampaignPolygon> sorted;
  sorted.reserve(polygons.size());
  for (const std::size_t index : order) sorted.push_back(polygons[index]);
  return sorted;
}

}  // namespace orlan::regionSelection
