#include "orlan/c/TableLocations.hpp"

#include <string>
#include <utility>

#include "orlan/c/Guard.hpp"
#include "orlan/c/TableLocationManager.hpp"

namespace orlan::c {

TableLocations::TableLocations(const orlan_location_functions& table, MainLoop& main,
                               std::shared_ptr<Tasks> ids)
    : service_(std::make_shared<Service>(table, main, std::move(ids))) {}

TableLocations::~TableLocations() = default;

std::shared_ptr<LocationManager> TableLocations::makeManager(std::string_view name) {
  service_->main.assertCurrent();
  auto manager = std::make_shared<Manager>(service_, name);
  service_->managers.insert_or_assign(manager->id(), manager);
  return manager;
}

void TableLocations::tell(orlan_id manager,
                          const std::function<void(Manager&, LocationManagerDelegate&)>& tellOne) {
  const auto all = service_->managers;  // delegates may make and drop managers
  for (const auto& [id, weak] : all) {
    if (manager != ORLAN_ALL_MANAGERS && manager != id) continue;
    const auto living = weak.lock();
    const auto delegate = living ? living->delegate() : nullptr;
    if (delegate) tellOne(*living, *delegate);
  }
}

void TableLocations::fixes(orlan_id manager, std::span<const Location> fixes) {
  if (fixes.empty()) return;
  service_->last = fixes.back();
  tell(manager, [&](Manager& each, LocationManagerDelegate& delegate) {
    if (manager != ORLAN_ALL_MANAGERS || each.wants(fixes.back().coordinate)) {
      delegate.didUpdateLocations(each, fixes);
    }
  });
}

void TableLocations::failed(orlan_id manager, const Error& error) {
  tell(manager, [&](Manager& each, LocationManagerDelegate& delegate) { delegate.didFail(each, error); });
}

void TableLocations::authorizationChanged() {
  tell(ORLAN_ALL_MANAGERS,
       [](Manager& each, LocationManagerDelegate& delegate) { delegate.didChangeAuthorization(each); });
}

void TableLocations::entered(orlan_id manager, const CircularRegion& region) {
  tell(manager,
       [&](Manager& each, LocationManagerDelegate& delegate) { delegate.didEnterRegion(each, region); });
}

void TableLocations::exited(orlan_id manager, const CircularRegion& region) {
  tell(manager,
       [&](Manager& each, LocationManagerDelegate& delegate) { delegate.didExitRegion(each, region); });
}

}  // namespace orlan::c
