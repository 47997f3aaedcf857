#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "phones/common/DistanceFilter.hpp"
#include "phones/common/LocationHub.hpp"

namespace orlan::phone {

/// One client of the hub: its settings, its delegate, and what it has been given so far.
class LocationHub::Manager final : public LocationManager, public std::enable_shared_from_this<Manager> {
 public:
  Manager(LocationHub& hub, std::string_view name) : hub_(hub), name_(name) {}

  void setDelegate(std::weak_ptr<LocationManagerDelegate> delegate) override;
  [[nodiscard]] LocationAuthorization authorizationStatus() const override { return hub_.authorization_; }
  void requestWhenInUseAuthorization() override { hub_.requestAuthorization(); }
  void requestAlwaysAuthorization() override { hub_.requestAuthorization(); }
  void setDesiredAccuracy(double metres) override { desiredAccuracy_ = metres; }
  void setDistanceFilter(double metres) override { distanceFilter_ = metres; }
  void setAllowsBackgroundUpdates(bool) override {}
  void startUpdatingLocation() override { setUpdating(true); }
  void stopUpdatingLocation() override { setUpdating(false); }
  void startMonitoringSignificantChanges() override { setSignificant(true); }
  void stopMonitoringSignificantChanges() override { setSignificant(false); }
  [[nodiscard]] std::optional<Location> location() const override { return hub_.position_; }
  void startMonitoring(const CircularRegion& region) override { hub_.startRegion(region); }
  void stopMonitoring(std::string_view identifier) override { hub_.stopRegion(identifier); }
  [[nodiscard]] std::vector<CircularRegion> monitoredRegions() const override {
    return hub_.regions_.regions();
  }

  [[nodiscard]] std::shared_ptr<LocationManagerDelegate> delegate() const { return delegate_.lock(); }
  [[nodiscard]] bool running() const { return updating_ || significant_; }

  /// The batch ends at `here`: gives it to the delegate if what runs wants it.
  void take(std::span<const Location> batch, const Place& here);

 private:
  void setUpdating(bool running);
  void setSignificant(bool running);

  LocationHub& hub_;
  std::string name_;
  std::weak_ptr<LocationManagerDelegate> delegate_;
  double desiredAccuracy_ = accuracyBest;
  double distanceFilter_ = distanceFilterNone;
  bool updating_ = false;
  bool significant_ = false;
  DistanceFilter sinceUpdate_;
  DistanceFilter sinceChange_;
};

}  // namespace orlan::phone
