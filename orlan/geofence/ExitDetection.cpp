#include "orlan/geofence/ExitDetection.hpp"

namespace orlan {

void ExitDetection::start() {
  if (isRequestingLocationUpdates_) {
    logger_.breadcrumb("🔄 Location updates already running, skipping restart");
    return;
  }
  logger_.breadcrumb("🔄 Starting location updates to force exit detection (iOS batching workaround)");
  lm_.setDesiredAccuracy(accuracyHundredMeters);
  lm_.setDistanceFilter(50.0);
  lm_.startUpdatingLocation();
  isRequestingLocationUpdates_ = true;
  main_.async([this, alive = lifetime_.token()] {
    if (alive) exitCheckTimer_ = main_.after(longest, [this] { stop(); });
  });
}

void ExitDetection::stop() {
  if (!isRequestingLocationUpdates_) return;
  logger_.breadcrumb("🛑 Stopping location updates (exit detection complete)");
  lm_.stopUpdatingLocation();
  isRequestingLocationUpdates_ = false;
  main_.async([this, alive = lifetime_.token()] {
    if (alive) exitCheckTimer_.cancel();
  });
}

}  // namespace orlan
