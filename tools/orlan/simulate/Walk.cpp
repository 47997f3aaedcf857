#include "tools/orlan/simulate/Walk.hpp"

#include <cmath>

#include "orlan/platform/Coordinate.hpp"

namespace orlan::simulate {
namespace {

Coordinate between(Coordinate a, Coordinate b, double share) {
  return {a.latitude + (b.latitude - a.latitude) * share, a.longitude + (b.longitude - a.longitude) * share};
}

}  // namespace

Walk atSpeed(Walk way, double speed) {
  double walked = 0.0;
  for (std::size_t i = 0; i < way.size(); ++i) {
    if (i > 0) {
      const double stretch = distance(way[i - 1].fix.coordinate, way[i].fix.coordinate);
      if (std::isfinite(stretch)) walked += stretch;
    }
    way[i].seconds = walked / speed;
  }
  return way;
}

double countFixes(const Walk& walk, Duration interval) {
  return walk.empty() ? 0.0 : std::ceil(walk.back().seconds / seconds(interval)) + 1.0;
}

std::vector<Fix> cut(const Walk& walk, Duration interval) {
  std::vector<Fix> fixes;
  if (walk.empty()) return fixes;
  const auto count = static_cast<std::size_t>(countFixes(walk, interval));
  fixes.reserve(count);
  std::size_t behind = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const double time = seconds(interval) * static_cast<double>(i);
    while (behind + 1 < walk.size() && walk[behind + 1].seconds <= time) ++behind;
    Fix fix = walk[behind].fix;
    if (behind + 1 < walk.size()) {
      const Waypoint& from = walk[behind];
      const Waypoint& to = walk[behind + 1];
      fix.coordinate = between(from.fix.coordinate, to.fix.coordinate,
                               (time - from.seconds) / (to.seconds - from.seconds));
    }
    fixes.push_back(fix);
  }
  return fixes;
}

}  // namespace orlan::simulate
