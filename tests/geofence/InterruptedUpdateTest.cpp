#include <gmock/gmock.h>

#include "geofence/Campaigns.hpp"
#include "geofence/GeofenceHost.hpp"
#include "orlan/geofence/BackgroundRegionMonitor.hpp"

namespace orlan::test {
namespace {

using testing::ElementsAre;

constexpr Coordinate home{51.5, -0.12};

/// A location service whose managers stop and start regions only so many times more: from then on the process
/// is as good as killed.
class DyingLocations final : public LocationService {
 public:
  DyingLocations(LocationService& inner, int operations) : inner_(inner), left_(operations) {}
  std::shared_ptr<LocationManager> makeManager(std::string_view name) override;
  [[nodiscard]] bool lives() { return left_ > 0 && left_-- > 0; }

 private:
  LocationService& inner_;
  int left_;
};

class DyingManager final : public LocationManager {
 public:
  DyingManager(DyingLocations& service, std::shared_ptr<LocationManager> inner)
      : service_(service), inner_(std::move(inner)) {}

  void setDelegate(std::weak_ptr<LocationManagerDelegate> delegate) override {
    inner_->setDelegate(std::move(delegate));
  }
  LocationAuthorization authorizationStatus() const override { return inner_->authorizationStatus(); }
  void requestWhenInUseAuthorization() override {}
  void requestAlwaysAuthorization() override {}
  void setDesiredAccuracy(double) override {}
  void setDistanceFilter(double) override {}
  void setAllowsBackgroundUpdates(bool) override {}
  void startUpdatingLocation() override {}
  void stopUpdatingLocation() override {}
  void startMonitoringSignificantChanges() override {}
  void stopMonitoringSignificantChanges() override {}
  std::optional<Location> location() const override { return inner_->location(); }
  void startMonitoring(const CircularRegion& region) override {
    if (service_.lives()) inner_->startMonitoring(region);
  }
  void stopMonitoring(std::string_view identifier) override {
    if (service_.lives()) inner_->stopMonitoring(identifier);
  }
  std::vector<CircularRegion> monitoredRegions() const override { return inner_->monitoredRegions(); }

 private:
  DyingLocations& service_;
  std::shared_ptr<LocationManager> inner_;
};

std::shared_ptr<LocationManager> DyingLocations::makeManager(std::string_view name) {
  return std::make_shared<DyingManager>(*this, inner_.makeManager(name));
}

std::vector<CampaignPolygon> squares(std::initializer_list<int> ids) {
  std::vector<CampaignPolygon> made;
  for (const int id : ids) {
    made.push_back({square({home.latitude + 0.01 * id, home.longitude}), campaign(id, 10 * id)});
  }
  return made;
}

TEST(InterruptedUpdate, TheNextStartRepairsIt) {
  const auto before = squares({1, 2, 3});
  const auto after = squares({2, 4, 5, 6});
  constexpr int operations = 3 + 4;  // of the undisturbed change
  for (int survived = 0; survived <= operations; ++survived) {
    GeofenceHost host(
        {.application = ApplicationState::background,
         .location = {.regionEvents = phone::RegionEvents::manual, .position = Location{home, 5.0, {}}}});
    const auto watched = [&] {
      std::vector<std::string> identifiers;
      for (const auto& region : host.phone.locations().monitoredRegions()) {
        identifiers.push_back(region.identifier);
      }
      return identifiers;
    };
    {
      DyingLocations locations(host.platform.locations, 3 + survived);
      BackgroundRegionMonitor monitor(host.platform.main, locations, host.services());
      monitor.updateRegions(before);
      monitor.updateRegions(after);
    }
    EXPECT_EQ(watched().size(), survived < 3 ? 3U - survived : survived - 3U) << survived;

    BackgroundRegionMonitor next(host.platform.main, host.platform.locations, host.services());
    next.updateRegions(after);
    EXPECT_THAT(watched(), ElementsAre("camp_2_20", "camp_4_40", "camp_5_50", "camp_6_60")) << survived;
  }
}

}  // namespace
}  // namespace orlan::test
