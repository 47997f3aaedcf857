#include "phones/common/LocationHub.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include "phones/common/LocationHubManager.hpp"

namespace orlan::phone {

LocationHub::LocationHub(MainLoop& main, PhoneObserver& observer, LocationSettings settings)
    : main_(main),
      observer_(observer),
      authorization_(settings.authorization),
      afterRequest_(settings.afterRequest),
      regionEvents_(settings.regionEvents),
      position_(settings.position) {}

LocationHub::~LocationHub() = default;

std::shared_ptr<LocationManager> LocationHub::makeManager(std::string_view name) {
  main_.assertCurrent();
  std::erase_if(managers_, [](const auto& each) { return each.expired(); });
  auto manager = std::make_shared<Manager>(*this, name);
  managers_.push_back(manager);
  return manager;
}

void LocationHub::deliver(std::span<const Location> batch) {
  main_.assertCurrent();
  if (batch.empty()) return;
  const Location fix = batch.back();
  position_ = fix;
  observer_.fixes(batch);
  if (!authorized()) return;

  auto running = managers();
  std::erase_if(running, [](const auto& each) { return !each->running(); });
  const Place here(fix.coordinate);
  for (const auto& manager : running) manager->take(batch, here);

  if (regionEvents_ != RegionEvents::automatic) return;
  for (const auto& [action, region] : regions_.update(fix)) {
    if (regions_.find(region.identifier)) report(action, region);
  }
}

void LocationHub::setAuthorization(LocationAuthorization status) {
  main_.assertCurrent();
  if (status == authorization_) return;
  authorization_ = status;
  for (const auto& manager : managers()) {
    if (const auto listener = manager->delegate()) listener->didChangeAuthorization(*manager);
  }
}

void LocationHub::fail(const Error& error) {
  main_.assertCurrent();
  for (const auto& manager : managers()) {
    const auto listener = manager->running() ? manager->delegate() : nullptr;
    if (listener) listener->didFail(*manager, error);
  }
}

void LocationHub::endProcess() {
  main_.assertCurrent();
  managers_.clear();
}

bool LocationHub::wantsFixes() const {
  main_.assertCurrent();
  const auto all = managers();
  return !regions_.regions().empty() ||
         std::any_of(all.begin(), all.end(), [](const auto& each) { return each->running(); });
}

std::vector<std::shared_ptr<LocationHub::Manager>> LocationHub::managers() const {
  std::vector<std::shared_ptr<Manager>> living;
  living.reserve(managers_.size());
  for (const auto& each : managers_) {
    if (auto manager = each.lock()) living.push_back(std::move(manager));
  }
  return living;
}

bool LocationHub::authorized() const {
  return authorization_ == LocationAuthorization::authorizedAlways ||
         authorization_ == LocationAuthorization::authorizedWhenInUse;
}

void LocationHub::requestAuthorization() {
  main_.assertCurrent();
  main_.async([this, alive = lifetime_.token()] {
    if (alive && authorization_ == LocationAuthorization::notDetermined) setAuthorization(afterRequest_);
  });
}

void LocationHub::startRegion(const CircularRegion& region) {
  main_.assertCurrent();
  if (regions_.start(region)) observer_.region(RegionAction::start, region);
}

void LocationHub::stopRegion(std::string_view identifier) {
  main_.assertCurrent();
  if (const auto stopped = regions_.stop(identifier)) observer_.region(RegionAction::stop, *stopped);
}

void LocationHub::cross(RegionAction action, std::string_view identifier) {
  main_.assertCurrent();
  regions_.setInside(identifier, action == RegionAction::enter);
  const CircularRegion* known = regions_.find(identifier);
  report(action, known ? *known : CircularRegion{std::string(identifier), {}});
}

void LocationHub::report(RegionAction action, const CircularRegion& region) {
  const CircularRegion crossed = region;  // the delegates may stop it
  observer_.region(action, crossed);
  for (const auto& manager : managers()) {
    const auto listener = manager->delegate();
    if (!listener) continue;
    if (action == RegionAction::enter) {
      listener->didEnterRegion(*manager, crossed);
    } else {
      listener->didExitRegion(*manager, crossed);
    }
  }
}

}  // namespace orlan::phone
