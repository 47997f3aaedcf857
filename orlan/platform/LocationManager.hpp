#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "orlan/base/Enumeration.hpp"
#include "orlan/base/Error.hpp"
#include "orlan/platform/Circle.hpp"
#include "orlan/platform/Location.hpp"

namespace orlan {

/// Whether the user lets the application know where the phone is.
enum class LocationAuthorization { notDetermined, restricted, denied, authorizedAlways, authorizedWhenInUse };

template <>
struct RawValues<LocationAuthorization> {
  static constexpr std::array table{std::pair{LocationAuthorization::notDetermined, std::int64_t{0}},
                                    std::pair{LocationAuthorization::restricted, std::int64_t{1}},
                                    std::pair{LocationAuthorization::denied, std::int64_t{2}},
                                    std::pair{LocationAuthorization::authorizedAlways, std::int64_t{3}},
                                    std::pair{LocationAuthorization::authorizedWhenInUse, std::int64_t{4}}};
};

/// Values for `LocationManager::setDesiredAccuracy`, metres.
inline constexpr double accuracyBest = -1.0;
inline constexpr double accuracyNearestTenMeters = 10.0;
inline constexpr double accuracyHundredMeters = 100.0;

/// Values for `LocationManager::setDistanceFilter`, metres.
inline constexpr double distanceFilterNone = -1.0;

class LocationManager;

/// Hears what a location manager reports, on the main thread. Methods one does not need keep their empty
/// bodies.
class LocationManagerDelegate {
 public:
  virtual ~LocationManagerDelegate() = default;
  virtual void didChangeAuthorization(LocationManager&) {}
  virtual void didUpdateLocations(LocationManager&, std::span<const Location>) {
  }  // oldest first, may be empty
  virtual void didFail(LocationManager&, const Error&) {}
  virtual void didEnterRegion(LocationManager&, const CircularRegion&) {}
  virtual void didExitRegion(LocationManager&, const CircularRegion&) {}
};

/// One client of the phone's location service: its own settings and its own delegate; the authorization, the
/// last known location and the monitored regions are the application's and the same for all. Main thread.
/// Destroying a manager ends its updates; monitored regions stay.
class LocationManager {
 public:
  LocationManager() = default;
  LocationManager(const LocationManager&) = delete;
  LocationManager& operator=(const LocationManager&) = delete;
  virtual ~LocationManager() = default;

  /// Held weakly. A new delegate hears the authorization once, on the next turn of the main loop.
  virtual void setDelegate(std::weak_ptr<LocationManagerDelegate> delegate) = 0;

  [[nodiscard]] virtual LocationAuthorization authorizationStatus() const = 0;
  virtual void requestWhenInUseAuthorization() = 0;
  virtual void requestAlwaysAuthorization() = 0;

  virtual void setDesiredAccuracy(double metres) = 0;
  /// A fix is delivered when it is at least this far from the last one delivered; the first always is.
  virtual void setDistanceFilter(double metres) = 0;
  virtual void setAllowsBackgroundUpdates(bool allowed) = 0;
  virtual void startUpdatingLocation() = 0;
  virtual void stopUpdatingLocation() = 0;
  virtual void startMonitoringSignificantChanges() = 0;
  virtual void stopMonitoringSignificantChanges() = 0;

  /// The phone's last known location.
  [[nodiscard]] virtual std::optional<Location> location() const = 0;

  /// At most 20 regions an application; one more is ignored. A region whose circle is not finite is ignored.
  virtual void startMonitoring(const CircularRegion& region) = 0;
  virtual void stopMonitoring(std::string_view identifier) = 0;
  [[nodiscard]] virtual std::vector<CircularRegion> monitoredRegions() const = 0;
};

/// Makes location managers. Main thread.
class LocationService {
 public:
  virtual ~LocationService() = default;

  /// `name` says in diagnostics who the client is: "permission", "foreground", "background", "host".
  [[nodiscard]] virtual std::shared_ptr<LocationManager> makeManager(std::string_view name) = 0;
};

}  // namespace orlan
