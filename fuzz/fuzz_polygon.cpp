// Rings and places of any kind: every shortcut must answer like the plain loop and like every distance.
#include <algorithm>
#include <vector>

#include "fuzz/Input.hpp"
#include "orlan/campaigns/PolygonSet.hpp"

namespace orlan {
namespace {

using Ring = std::vector<Coordinate>;

/// From its description, sharing nothing with the library.
bool plainLoop(const Ring& v, Coordinate point) {
  const std::size_t n = v.size();
  if (n < 3) return false;
  bool inside = false;
  for (std::size_t i = 0, j = n - 1; i < n; j = i++) {
    const double yi = v[i].longitude, yj = v[j].longitude, xi = v[i].latitude, xj = v[j].latitude;
    if ((yi > point.longitude) != (yj > point.longitude)) {
      const double crossing = (point.longitude - yi) * (xj - xi) / ((yj - yi) + 2.220446049250313e-16) + xi;
      if (crossing > point.latitude) inside = !inside;
    }
  }
  return inside;
}

bool someVertexWithin(const Ring& ring, Coordinate point, double metres) {
  return std::any_of(ring.begin(), ring.end(),
                     [&](Coordinate vertex) { return distance(point, vertex) <= metres; });
}

void check(fuzz::Input input) {
  std::vector<Ring> rings(1 + input.byte() % 6);
  std::vector<CampaignPolygon> polygons;
  for (Ring& ring : rings) {
    for (int left = input.byte() % 16; left > 0; --left) ring.push_back({input.number(), input.number()});
    polygons.push_back({Polygon(ring), CampaignData::Campaign{}});
  }
  const PolygonSet set(polygons);
  while (!input.empty()) {
    const Coordinate point{input.number(), input.number()};
    const double metres = std::abs(input.number()) * 100.0;
    std::vector<PolygonSet::Index> containing;
    std::vector<PolygonSet::Index> near;
    for (PolygonSet::Index i = 0; i < rings.size(); ++i) {
      const Polygon& polygon = polygons[i].polygon;
      if (plainLoop(rings[i], point)) containing.push_back(i);
      if (someVertexWithin(rings[i], point, metres)) near.push_back(i);
      const bool inside = plainLoop(rings[i], point);
      const auto box = polygon.box();
      fuzz::require(rayCastingContains(rings[i], point) == inside, "the plain loop");
      fuzz::require(polygon.rayCastingContains(point) == inside, "a polygon's answer");
      fuzz::require(!inside || (box.longitude.min <= point.longitude && point.longitude < box.longitude.max &&
                                box.minLatitude <= point.latitude && point.latitude < box.maxLatitude),
                    "nothing is inside beyond the box");
      (void)isInside(point, polygon);
    }
    fuzz::require(set.containing(point) == containing, "a set's answer");
    fuzz::require(set.withVertexWithin(point, metres) == near, "a set's answer about vertices");
  }
}

}  // namespace
}  // namespace orlan

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orlan::check({data, size});
  return 0;
}
