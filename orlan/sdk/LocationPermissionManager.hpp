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

  /// The current `Runtime`'s manager, made at its first use.
  static LocationPermissionManager& shared();

  /// What was published last; `notDetermined` before.
  [[nodiscard]] LocationAuthorization currentStatus() const;

  /// The status, and where the phone is while that may be known: at subscription what is known now, then each
  /// report of the location service, on the main thread.
  [[nodiscard]] Publisher<LocationAuthorization>& statusPublisher();
  [[nodiscard]] Publisher<std::optional<Location>>& lastLocationPublisher();

  /// What the facade's start does: becomes the delegate of its location manager and observes the application,
  /// the first time; then publishes the current status.
  void configure();

  /// Ask the person, if the status is still open. What comes of it is published.
  void requestWhenInUseAuthorization();
  void requestAlwaysAuthorization();

 private:
  struct Parts;
  std::shared_ptr<Parts> parts_;  // shared only to be the location manager's delegate, held weakly there
};

}  // namespace orlan
