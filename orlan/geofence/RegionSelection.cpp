#include "orlan/geofence/RegionSelection.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "orlan/platform/Place.hpp"
#include "orlan/platform/VertexDistance.hpp"

namespace orlan::regionSelection {
namespace {

constexpr double leastRadius = 100.0;  // metres
constexpr double mostRadius = 1000.0;

/// The greatest finite double when there is none.
double distanceToCentre(Coordinate from, const Polygon& polygon) {
  const double metres = distance(from, polygon.centre().coordinate());
  return std::isfinite(metres) ? metres : std::numeric_limits<double>::max();
}

/// A squared chord beyond which nobody is among the nearest.
double farthestWanted(const std::vector<double>& squaredChords) {
  std::array<double, mostRegions> least{};
  const auto end =
      std::partial_sort_copy(squaredChords.begin(), squaredChords.end(), least.begin(), least.end());
  return end == least.end() ? surelyFartherThan(least.back()) : std::numeric_limits<double>::infinity();
}

}  // namespace

std::optional<Circle> circleFor(const Polygon& polygon) {
  const Place& place = polygon.centre();
  if (!place.measurable()) return std::nullopt;
  const Coordinate centre = place.coordinate();
  double radius = leastRadius;
  Vicinity covered(centre, radius);
  for (const Coordinate& vertex : polygon.coordinates()) {
    if (covered.contains(vertex)) continue;
    radius = distance(centre, vertex);
    if (radius >= mostRadius) return Circle{centre, mostRadius};
    covered = Vicinity(centre, radius);
  }
  return Circle{centre, radius};
}

std::vector<CampaignPolygon> nearest(const std::vector<CampaignPolygon>& polygons, Coordinate from) {
  const Place here(from);
  std::vector<double> chords;
  chords.reserve(polygons.size());
  for (const auto& entry : polygons) chords.push_back(squaredChord(here, entry.polygon.centre()));

  struct Measured {
    double metres;
    const CampaignPolygon* entry;
  };
  std::vector<Measured> measured;
  const double limit = farthestWanted(chords);
  for (std::size_t i = 0; i < polygons.size(); ++i) {
    if (chords[i] > limit) continue;
    measured.push_back({distanceToCentre(from, polygons[i].polygon), &polygons[i]});
  }
  std::stable_sort(measured.begin(), measured.end(),
                   [](const Measured& a, const Measured& b) { return a.metres < b.metres; });

  std::vector<CampaignPolygon> chosen;
  const std::size_t count = std::min(measured.size(), mostRegions);
  for (std::size_t i = 0; i < count; ++i) chosen.push_back(*measured[i].entry);
  return chosen;
}

}  // namespace orlan::regionSelection
