#include "orlan/c/TableLocationManager.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "orlan/c/Guard.hpp"
#include "orlan/c/TableStorage.hpp"
#include "orlan/c/Values.hpp"

namespace orlan::c {
namespace {

constexpr double significantChange = 500.0;  // metres
constexpr std::size_t mostRegions = 20;

bool isSame(const std::weak_ptr<LocationManagerDelegate>& a,
            const std::weak_ptr<LocationManagerDelegate>& b) {
  return !a.owner_before(b) && !b.owner_before(a);
}

bool isFinite(const Circle& circle) {
  return std::isfinite(circle.centre.latitude) && std::isfinite(circle.centre.longitude) &&
         std::isfinite(circle.radius);
}

}  // namespace

std::vector<CircularRegion> TableLocations::Service::watched() const {
  std::vector<CircularRegion> found;
  if (table.regions != nullptr) {
    orlan_answer answer;
    ask(table.regions, table.context, &answer);
    return std::move(answer.regions);
  }
  found.reserve(regions.size());
  for (const auto& [identifier, region] : regions) found.push_back(region);
  return found;
}

void TableLocations::Manager::Filter::set(bool runs) {
  if (runs && !running) last.reset();
  running = runs;
}

// A distance that cannot be measured does not pass, and leaves nobody waiting for ever.
bool TableLocations::Manager::Filter::passes(Coordinate place, double metres) {
  if (!running) return false;
  const bool pass = !last || !(metres > 0.0) || distance(*last, place) >= metres;
  if (pass) last = std::isnan(distance(place, place)) ? std::nullopt : std::optional(place);
  return pass;
}

TableLocations::Manager::Manager(std::shared_ptr<Service> service, std::string_view name)
    : service_(std::move(service)), id_(service_->ids->nextId()) {
  const std::string text(name);
  ask(service_->table.made, service_->table.context, id_, lent(text));
}

TableLocations::Manager::~Manager() {
  service_->managers.erase(id_);
  ask(service_->table.gone, service_->table.context, id_);
}

void TableLocations::Manager::setDelegate(std::weak_ptr<LocationManagerDelegate> delegate) {
  service_->main.assertCurrent();
  const bool isNew = !isSame(delegate, delegate_);
  delegate_ = std::move(delegate);
  if (!isNew || delegate_.expired()) return;
  service_->main.async([self = weak_from_this(), asked = delegate_] {
    const auto manager = self.lock();
    if (!manager || !isSame(asked, manager->delegate_)) return;
    if (const auto listener = manager->delegate()) listener->didChangeAuthorization(*manager);
  });
}

LocationAuthorization TableLocations::Manager::authorizationStatus() const {
  const auto& table = service_->table;
  if (table.authorization == nullptr) return LocationAuthorization::authorizedAlways;
  return fromRawValue<LocationAuthorization>(std::int64_t{ask(table.authorization, table.context)})
      .value_or(LocationAuthorization::notDetermined);
}

void TableLocations::Manager::requestWhenInUseAuthorization() {
  ask(service_->table.request_authorization, service_->table.context, false);
}
void TableLocations::Manager::requestAlwaysAuthorization() {
  ask(service_->table.request_authorization, service_->table.context, true);
}

void TableLocations::Manager::setDesiredAccuracy(double metres) {
  ask(service_->table.set_desired_accuracy, service_->table.context, id_, metres);
}

void TableLocations::Manager::setDistanceFilter(double metres) {
  distanceFilter_ = metres;
  ask(service_->table.set_distance_filter, service_->table.context, id_, metres);
}

void TableLocations::Manager::setAllowsBackgroundUpdates(bool allowed) {
  ask(service_->table.set_background_updates, service_->table.context, id_, allowed);
}

void TableLocations::Manager::setUpdating(bool running) {
  updates_.set(running);
  ask(service_->table.set_updating, service_->table.context, id_, running);
}

void TableLocations::Manager::setSignificant(bool running) {
  changes_.set(running);
  ask(service_->table.set_significant_changes, service_->table.context, id_, running);
}

bool TableLocations::Manager::wants(Coordinate place) {
  const auto status = authorizationStatus();
  if (status != LocationAuthorization::authorizedAlways &&
      status != LocationAuthorization::authorizedWhenInUse) {
    return false;
  }
  const bool updated = updates_.passes(place, distanceFilter_);
  const bool changed = changes_.passes(place, significantChange);
  return updated || changed;
}

std::optional<Location> TableLocations::Manager::location() const {
  const auto& table = service_->table;
  if (table.last_location == nullptr) return service_->last;
  orlan_location found{};
  if (!ask(table.last_location, table.context, &found)) return std::nullopt;
  return from(found);
}

void TableLocations::Manager::startMonitoring(const CircularRegion& region) {
  if (!isFinite(region.circle)) return;
  const auto watched = service_->watched();
  const bool known = std::any_of(watched.begin(), watched.end(), [&](const CircularRegion& each) {
    return each.identifier == region.identifier;
  });
  if (!known && watched.size() >= mostRegions) return;
  if (service_->table.regions == nullptr) service_->regions.insert_or_assign(region.identifier, region);
  const orlan_region out{lent(region.identifier), to(region.circle), region.notifyOnEntry,
                         region.notifyOnExit};
  ask(service_->table.start_region, service_->table.context, &out);
}

void TableLocations::Manager::stopMonitoring(std::string_view identifier) {
  const std::string name(identifier);
  service_->regions.erase(name);
  ask(service_->table.stop_region, service_->table.context, lent(name));
}

}  // namespace orlan::c
