#include "tools/orlan/simulate/Walk.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>

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

double Track::countFixes() const {
  return way.empty() ? 0.0 : std::ceil(way.back().seconds / seconds(interval)) + 1.0;
}

Fix Track::fix(std::size_t index) const {
  const double now = seconds(interval) * static_cast<double>(index);
  const auto ahead = std::ranges::upper_bound(way, now, {}, &Waypoint::seconds);
  const Waypoint& from = *std::prev(ahead);
  Fix fix = from.fix;
  if (ahead != way.end()) {
    fix.coordinate = between(from.fix.coordinate, ahead->fix.coordinate,
                             (now - from.seconds) / (ahead->seconds - from.seconds));
  }
  return fix;
}

}  // namespace orlan::simulate
