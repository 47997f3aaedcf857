#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "orlan/base/Lifetime.hpp"
#include "orlan/platform/LocationManager.hpp"
#include "orlan/platform/SerialQueue.hpp"
#include "phones/common/PhoneObserver.hpp"
#include "phones/common/RegionMonitor.hpp"

namespace orlan::phone {

/// Who raises region entry and exit: the hub, judging each fix, or only `enterRegion` and `exitRegion`.
enum class RegionEvents { automatic, manual };

struct LocationSettings {
  LocationAuthorization authorization = LocationAuthorization::authorizedAlways;
  LocationAuthorization afterRequest =
      LocationAuthorization::authorizedAlways;  // what the person will choose
  RegionEvents regionEvents = RegionEvents::automatic;
  std::optional<Location> position;  // the last known location when the phone is switched on
};

/// A phone's location service behind a source of fixes. Main thread; the hub outlives its managers.
///
/// - Managers hear in the order in which they were made. Who is destroyed or stopped by an earlier one's
///   delegate hears no more.
/// - Starting updates that run already changes nothing; after a stop, the first fix after a start passes the
///   distance filter. A distance that cannot be measured does not pass, except that nobody waits for a
///   distance from a place that has none.
/// - Significant changes are fixes 500 m or more from the last one delivered as such; the first after a
///   start passes. A fix that passes for both reasons is delivered once.
/// - While the application is not authorized (not determined, restricted, denied), no manager is given fixes
///   and no fix raises a region event; what runs goes on once it is authorized again. The last known location
///   stays readable. Permission to run in the background changes nothing: the host decides when a fix comes.
/// - Regions are the phone's: they stay when managers end. Every manager with a delegate hears of a crossing.
class LocationHub final : public LocationService {
 public:
  LocationHub(MainLoop& main, PhoneObserver& observer, LocationSettings settings = {});
  ~LocationHub() override;

  [[nodiscard]] std::shared_ptr<LocationManager> makeManager(std::string_view name) override;

  /// The phone got these fixes, oldest first; the last one is its position. Running managers hear the whole
  /// batch if its last fix passes their filter; then the regions are judged by the last fix. An empty batch
  /// is nothing.
  void deliver(std::span<const Location> batch);

  /// The person changed their mind in the phone's settings; every delegate hears of it at once. To the status
  /// that it has: nothing.
  void setAuthorization(LocationAuthorization status);
  [[nodiscard]] LocationAuthorization authorization() const { return authorization_; }

  /// Managers with running updates of either kind hear of this error.
  void fail(const Error& error);

  /// The operating system reports a crossing, whether or not the region is monitored (an unknown one has a
  /// circle of zeros).
  void enterRegion(std::string_view identifier) { cross(RegionAction::enter, identifier); }
  void exitRegion(std::string_view identifier) { cross(RegionAction::exit, identifier); }

  /// The process ends: its managers hear no more. Position, authorization and regions stay.
  void endProcess();

  [[nodiscard]] std::optional<Location> position() const { return position_; }
  [[nodiscard]] std::vector<CircularRegion> monitoredRegions() const { return regions_.regions(); }

 private:
  class Manager;
  void tellAll(const std::function<void(Manager&, LocationManagerDelegate&)>& tell);
  void requestAuthorization();
  void startRegion(const CircularRegion& region);
  void stopRegion(std::string_view identifier);
  void cross(RegionAction action, std::string_view identifier);
  void report(RegionAction action, const CircularRegion& region);

  MainLoop& main_;
  PhoneObserver& observer_;
  LocationAuthorization authorization_;
  LocationAuthorization afterRequest_;
  RegionEvents regionEvents_;
  std::optional<Location> position_;
  RegionMonitor regions_;
  std::vector<std::weak_ptr<Manager>> managers_;
  Lifetime lifetime_;
};

}  // namespace orlan::phone
