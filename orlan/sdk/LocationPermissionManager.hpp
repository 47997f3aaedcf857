#pragma once

#include <memory>
#include <optional>

#include "orlan/base/Subject.hpp"
#include "orlan/platform/Application.hpp"
#include "orlan/platform/Console.hpp"
#include "orlan/platform/LocationManager.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// Knows whether the application may use the location and where the phone is: live while it may, by
/// significant changes in the background. Main thread.
class LocationPermissionManager {
 public:
  LocationPermissionManager(MainLoop& main, LocationService& locations, Application& application,
                            SystemLog& systemLog);
  ~LocationPermissionManager();

  static LocationPermissionManager& shared();

  [[nodiscard]] LocationAuthorization currentStatus() const;
  [[nodiscard]] Publisher<LocationAuthorization>& statusPublisher();
  [[nodiscard]] Publisher<std::optional<Location>>& lastLocationPublisher();

  /// What the facade's start does: becomes the delegate of its location manager and observes the application,
  /// the first time; then publishes the current status.
  void configure();

  void requestWhenInUseAuthorization();
  void requestAlwaysAuthorization();

 private:
  struct Parts;
  std::shared_ptr<Parts> parts_;  // shared only to be the location manager's delegate, held weakly there
};

}  // namespace orlan
