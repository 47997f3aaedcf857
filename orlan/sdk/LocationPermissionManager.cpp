#include "orlan/sdk/LocationPermissionManager.hpp"

#include <utility>

namespace orlan {
namespace {

constexpr double coarseDistanceFilter = 10.0;  // metres

bool mayLocate(LocationAuthorization status) {
  return status == LocationAuthorization::authorizedAlways ||
         status == LocationAuthorization::authorizedWhenInUse;
}

}  // namespace

struct LocationPermissionManager::Parts : LocationManagerDelegate {
  Parts(MainLoop& loop, LocationService& locations, Application& app, SystemLog& log)
      : main(loop), application(app), systemLog(log), mgr(locations.makeManager("permission")) {
    mgr->setDesiredAccuracy(accuracyNearestTenMeters);
    mgr->setDistanceFilter(coarseDistanceFilter);
    mgr->setAllowsBackgroundUpdates(true);
  }

  void observeApplication() {
    if (!appStateObservers.empty()) return;
    appStateObservers.add(
        application.observe(ApplicationSignal::didEnterBackground, [this] { enteredBackground(); }));
    appStateObservers.add(
        application.observe(ApplicationSignal::willEnterForeground, [this] { entersForeground(); }));
  }

  void enteredBackground() {
    if (mgr->authorizationStatus() != LocationAuthorization::authorizedAlways) return;
    mgr->stopUpdatingLocation();
    mgr->startMonitoringSignificantChanges();
  }

  void entersForeground() {
    if (!mayLocate(mgr->authorizationStatus())) return;
    mgr->stopMonitoringSignificantChanges();
    mgr->setDesiredAccuracy(accuracyNearestTenMeters);
    mgr->setDistanceFilter(coarseDistanceFilter);
    mgr->startUpdatingLocation();
  }

  void didChangeAuthorization(LocationManager&) override {
    const Turn turn = main.enter();
    const LocationAuthorization status = mgr->authorizationStatus();
    // Subscribers hear values on the next turn of the main loop, never inside the location service's
    // callback.
    main.async([this, status] { setStatus(status); });
    if (mayLocate(status)) {
      mgr->startUpdatingLocation();
    } else {
      mgr->stopUpdatingLocation();
      main.async([this] { lastLocationSubject.send(std::nullopt); });
    }
  }

  void didUpdateLocations(LocationManager&, std::span<const Location> locations) override {
    const Turn turn = main.enter();
    if (locations.empty()) return;
    main.async([this, latest = locations.back()] { lastLocationSubject.send(latest); });
  }

  void didFail(LocationManager&, const Error& error) override {
    systemLog.write("[Orlan] CLLocation error: " + error.description);
  }

  void setStatus(LocationAuthorization status) {
    currentStatus = status;
    statusSubject.send(status);
  }

  MainLoop& main;
  Application& application;
  SystemLog& systemLog;
  LocationAuthorization currentStatus = LocationAuthorization::notDetermined;
  CurrentValue<LocationAuthorization> statusSubject{LocationAuthorization::notDetermined};
  CurrentValue<std::optional<Location>> lastLocationSubject;
  SubscriptionBag appStateObservers;
  bool isConfigured = false;
  std::shared_ptr<LocationManager> mgr;
};

LocationPermissionManager::LocationPermissionManager(MainLoop& main, LocationService& locations,
                                                     Application& application, SystemLog& systemLog)
    : parts_(std::make_shared<Parts>(main, locations, application, systemLog)) {}

LocationPermissionManager::~LocationPermissionManager() = default;

LocationAuthorization LocationPermissionManager::currentStatus() const {
  return parts_->currentStatus;
}

Publisher<LocationAuthorization>& LocationPermissionManager::statusPublisher() {
  return parts_->statusSubject;
}

Publisher<std::optional<Location>>& LocationPermissionManager::lastLocationPublisher() {
  return parts_->lastLocationSubject;
}

void LocationPermissionManager::configure() {
  const Turn turn = parts_->main.enter();
  if (!std::exchange(parts_->isConfigured, true)) {
    parts_->mgr->setDelegate(parts_);
    parts_->observeApplication();
  }
  parts_->setStatus(parts_->mgr->authorizationStatus());
}

void LocationPermissionManager::requestWhenInUseAuthorization() {
  const Turn turn = parts_->main.enter();
  parts_->mgr->requestWhenInUseAuthorization();
}

void LocationPermissionManager::requestAlwaysAuthorization() {
  const Turn turn = parts_->main.enter();
  parts_->mgr->requestAlwaysAuthorization();
}

}  // namespace orlan
