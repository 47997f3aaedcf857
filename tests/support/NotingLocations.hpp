#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orlan/base/text.hpp"
#include "orlan/platform/LocationManager.hpp"

namespace orlan::test {

/// A location service with one manager, which notes what is set on it and brings nothing by itself.
class NotingLocations final : public LocationService {
 public:
  struct Manager final : LocationManager {
    std::vector<std::string> settings;
    std::weak_ptr<LocationManagerDelegate> delegate;

    void setDelegate(std::weak_ptr<LocationManagerDelegate> to) override { delegate = std::move(to); }
    [[nodiscard]] LocationAuthorization authorizationStatus() const override {
      return LocationAuthorization::authorizedAlways;
    }
    void requestWhenInUseAuthorization() override {}
    void requestAlwaysAuthorization() override {}
    void setDesiredAccuracy(double to) override { settings.push_back("accuracy " + text::fromDouble(to)); }
    void setDistanceFilter(double to) override { settings.push_back("filter " + text::fromDouble(to)); }
    void setAllowsBackgroundUpdates(bool to) override {
      settings.emplace_back(to ? "in the background too" : "only in front");
    }
    void startUpdatingLocation() override {}
    void stopUpdatingLocation() override {}
    void startMonitoringSignificantChanges() override {}
    void stopMonitoringSignificantChanges() override {}
    [[nodiscard]] std::optional<Location> location() const override { return {}; }
    void startMonitoring(const CircularRegion&) override {}
    void stopMonitoring(std::string_view) override {}
    [[nodiscard]] std::vector<CircularRegion> monitoredRegions() const override { return {}; }
  };

  std::shared_ptr<Manager> manager = std::make_shared<Manager>();
  [[nodiscard]] std::shared_ptr<LocationManager> makeManager(std::string_view) override { return manager; }
};

}  // namespace orlan::test
