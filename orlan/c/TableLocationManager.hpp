#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orlan/c/TableLocations.hpp"

namespace orlan::c {

/// What all managers of a phone share.
struct TableLocations::Service {
  Service(const orlan_location_functions& functions, MainLoop& loop, std::shared_ptr<Tasks> phoneIds)
      : table(functions), main(loop), ids(std::move(phoneIds)) {}

  const orlan_location_functions table;
  MainLoop& main;
  const std::shared_ptr<Tasks> ids;
  std::map<orlan_id, std::weak_ptr<Manager>> managers;         // in the order of making
  std::optional<Location> last;                                // that was told
  std::map<std::string, CircularRegion, std::less<>> regions;  // of phones that do not list theirs

  [[nodiscard]] std::vector<CircularRegion> watched() const;
};

/// One client of the host's location service.
class TableLocations::Manager final : public LocationManager, public std::enable_shared_from_this<Manager> {
 public:
  Manager(std::shared_ptr<Service> service, std::string_view name);
  ~Manager() override;
  Manager(const Manager&) = delete;
  Manager& operator=(const Manager&) = delete;

  void setDelegate(std::weak_ptr<LocationManagerDelegate> delegate) override;
  [[nodiscard]] LocationAuthorization authorizationStatus() const override;
  void requestWhenInUseAuthorization() override;
  void requestAlwaysAuthorization() override;
  void setDesiredAccuracy(double metres) override;
  void setDistanceFilter(double metres) override;
  void setAllowsBackgroundUpdates(bool allowed) override;
  void startUpdatingLocation() override { setUpdating(true); }
  void stopUpdatingLocation() override { setUpdating(false); }
  void startMonitoringSignificantChanges() override { setSignificant(true); }
  void stopMonitoringSignificantChanges() override { setSignificant(false); }
  [[nodiscard]] std::optional<Location> location() const override;
  void startMonitoring(const CircularRegion& region) override;
  void stopMonitoring(std::string_view identifier) override;
  [[nodiscard]] std::vector<CircularRegion> monitoredRegions() const override { return service_->watched(); }

  [[nodiscard]] orlan_id id() const { return id_; }
  [[nodiscard]] std::shared_ptr<LocationManagerDelegate> delegate() const { return delegate_.lock(); }

  /// Whether a fix there, told for all, is for this one.
  [[nodiscard]] bool wants(Coordinate place);

 private:
  /// Where the last fix was that passed a filter.
  struct Filter {
    bool running = false;
    std::optional<Coordinate> last;
    void set(bool runs);
    [[nodiscard]] bool passes(Coordinate place, double metres);
  };

  void setUpdating(bool running);
  void setSignificant(bool running);

  const std::shared_ptr<Service> service_;
  const orlan_id id_;
  std::weak_ptr<LocationManagerDelegate> delegate_;
  double distanceFilter_ = distanceFilterNone;
  Filter updates_;
  Filter changes_;
};

}  // namespace orlan::c
