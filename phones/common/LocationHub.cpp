#include "phones/common/LocationHub.hpp"

#include <string>
#include <utility>

#include "phones/common/LocationClient.hpp"

namespace orlan::phone {

/// One client of the hub.
class LocationHub::Manager final : public LocationClient {
 public:
  Manager(LocationHub& hub, std::string_view name) : LocationClient(hub.main_), hub_(hub), name_(name) {}

  [[nodiscard]] LocationAuthorization authorizationStatus() const override { return hub_.authorization_; }
  void requestWhenInUseAuthorization() override { hub_.requestAuthorization(); }
  void requestAlwaysAuthorization() override { hub_.requestAuthorization(); }
  void setDesiredAccuracy(double metres) override { desiredAccuracy_ = metres; }
  void setAllowsBackgroundUpdates(bool) override {}
  [[nodiscard]] std::optional<Location> location() const override { return hub_.position_; }
  void startMonitoring(const CircularRegion& region) override { hub_.startRegion(region); }
  void stopMonitoring(std::string_view identifier) override { hub_.stopRegion(identifier); }
  [[nodiscard]] std::vector<CircularRegion> monitoredRegions() const override {
    return hub_.regions_.regions();
  }

 private:
  void setUpdating(bool running) override {
    main().assertCurrent();
    LocationClient::setUpdating(running);
    hub_.observer_.locationUpdates(name_, running, desiredAccuracy_, distanceFilter());
  }
  void setSignificant(bool running) override {
    main().assertCurrent();
    LocationClient::setSignificant(running);
    hub_.observer_.significantChanges(name_, running);
  }

  LocationHub& hub_;
  std::string name_;
  double desiredAccuracy_ = accuracyBest;
};

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
  if (!isAuthorized(authorization_)) return;

  const Place here(fix.coordinate);
  auto running = managers_;  // those who are started meanwhile wait for the next one
  std::erase_if(running, [](const auto& each) {
    const auto manager = each.lock();
    return !manager || !manager->running();
  });
  for (const auto& each : running) {
    const auto manager = each.lock();
    const auto delegate = manager ? manager->delegate() : nullptr;
    if (delegate && manager->wants(here)) delegate->didUpdateLocations(*manager, batch);
  }

  if (regionEvents_ != RegionEvents::automatic) return;
  for (const auto& [action, region] : regions_.update(fix)) {
    if (regions_.find(region.identifier)) report(action, region);
  }
}

void LocationHub::setAuthorization(LocationAuthorization status) {
  main_.assertCurrent();
  if (status == authorization_) return;
  authorization_ = status;
  tellAll(
      [](Manager& manager, LocationManagerDelegate& delegate) { delegate.didChangeAuthorization(manager); });
}

void LocationHub::fail(const Error& error) {
  main_.assertCurrent();
  tellAll([&](Manager& manager, LocationManagerDelegate& delegate) {
    if (manager.running()) delegate.didFail(manager, error);
  });
}

void LocationHub::endProcess() {
  main_.assertCurrent();
  managers_.clear();
}

void LocationHub::tellAll(const std::function<void(Manager&, LocationManagerDelegate&)>& tell) {
  const auto all = managers_;  // those who are made meanwhile have nothing to hear
  for (const auto& each : all) {
    const auto manager = each.lock();
    const auto delegate = manager ? manager->delegate() : nullptr;
    if (delegate) tell(*manager, *delegate);
  }
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

// `region` is a copy of the monitor's own: a delegate may stop it.
void LocationHub::report(RegionAction action, const CircularRegion& region) {
  observer_.region(action, region);
  tellAll([&](Manager& manager, LocationManagerDelegate& delegate) {
    if (action == RegionAction::enter) {
      delegate.didEnterRegion(manager, region);
    } else {
      delegate.didExitRegion(manager, region);
    }
  });
}

}  // namespace orlan::phone
