#include "phones/common/RegionMonitor.hpp"

#include <algorithm>
#include <cmath>

namespace orlan::phone {

namespace {

bool isFinite(const Circle& circle) {
  return std::isfinite(circle.centre.latitude) && std::isfinite(circle.centre.longitude) &&
         std::isfinite(circle.radius);
}

}  // namespace

bool RegionMonitor::start(const CircularRegion& region) {
  if (!isFinite(region.circle)) return false;
  const Watched fresh{region, Place(region.circle.centre)};
  if (Watched* known = watched(region.identifier)) {
    *known = fresh;
    return true;
  }
  if (watched_.size() >= maxRegions) return false;
  watched_.push_back(fresh);
  return true;
}

std::optional<CircularRegion> RegionMonitor::stop(std::string_view identifier) {
  const auto found = std::find_if(watched_.begin(), watched_.end(),
                                  [&](const Watched& each) { return each.region.identifier == identifier; });
  if (found == watched_.end()) return std::nullopt;
  std::optional<CircularRegion> stopped = std::move(found->region);
  watched_.erase(found);
  return stopped;
}

const CircularRegion* RegionMonitor::find(std::string_view identifier) const {
  for (const Watched& each : watched_) {
    if (each.region.identifier == identifier) return &each.region;
  }
  return nullptr;
}

std::vector<CircularRegion> RegionMonitor::regions() const {
  std::vector<CircularRegion> all;
  all.reserve(watched_.size());
  for (const Watched& each : watched_) all.push_back(each.region);
  return all;
}

std::vector<RegionMonitor::Crossing> RegionMonitor::update(const Location& fix) {
  std::vector<Crossing> crossings;
  const Place here(fix.coordinate);
  if (!(fix.horizontalAccuracy >= 0.0) || !here.measurable()) return crossings;
  const double margin = std::min(fix.horizontalAccuracy, maxExitMargin);
  for (Watched& each : watched_) {
    const double radius = each.region.circle.radius;
    if (!each.inside && compareDistance(here, each.centre, radius) <= 0) {
      each.inside = true;
      if (each.region.notifyOnEntry) crossings.push_back({RegionAction::enter, each.region});
    } else if (each.inside && compareDistance(here, each.centre, radius + margin) > 0) {
      each.inside = false;
      if (each.region.notifyOnExit) crossings.push_back({RegionAction::exit, each.region});
    }
  }
  return crossings;
}

void RegionMonitor::setInside(std::string_view identifier, bool inside) {
  if (Watched* known = watched(identifier)) known->inside = inside;
}

RegionMonitor::Watched* RegionMonitor::watched(std::string_view identifier) {
  for (Watched& each : watched_) {
    if (each.region.identifier == identifier) return &each;
  }
  return nullptr;
}

}  // namespace orlan::phone
