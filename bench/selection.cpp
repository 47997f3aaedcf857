// The 20 nearest of many campaigns, as the background monitor chooses them.
#include <algorithm>

#include "bench/Timing.hpp"
#include "bench/Town.hpp"
#include "bench/rows.hpp"
#include "orlan/geofence/RegionSelection.hpp"

namespace orlan::bench {
namespace {

Coordinate meanOf(std::span<const Coordinate> ring) {
  Coordinate sum;
  for (const Coordinate& vertex : ring) {
    sum.latitude += vertex.latitude;
    sum.longitude += vertex.longitude;
  }
  const auto count = static_cast<double>(ring.size());
  return {sum.latitude / count, sum.longitude / count};
}

/// A sort whose comparator measures both distances anew each time.
std::vector<CampaignPolygon> recomputing(std::vector<CampaignPolygon> polygons, Coordinate from) {
  const auto metres = [from](const CampaignPolygon& entry) {
    return distance(from, meanOf(entry.polygon.coordinates()));
  };
  std::stable_sort(polygons.begin(), polygons.end(),
                   [&](const auto& a, const auto& b) { return metres(a) < metres(b); });
  polygons.resize(std::min(polygons.size(), regionSelection::mostRegions), polygons.front());
  return polygons;
}

}  // namespace

void selection(Table& table) {
  Row& row = table.emplace_back(Row{"Selection of the nearest 20", "polygons", Unit::nanoseconds, {}});
  for (const std::size_t count : {100, 1'000, 10'000}) {
    Town town(count);
    const auto polygons = town.polygons();
    const Coordinate from = town.walk(1).front();
    if (regionSelection::nearest(polygons, from) != recomputing(polygons, from)) std::abort();
    row.measure(
        static_cast<double>(count),
        {{"ours", [&] { return nanoseconds([&] { keep(regionSelection::nearest(polygons, from)); }); }},
         {"recomputing comparator",
          [&] { return nanoseconds([&] { keep(recomputing(polygons, from)); }); }}});
  }
}

}  // namespace orlan::bench
