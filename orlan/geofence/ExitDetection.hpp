#pragma once

#include <memory>

#include "orlan/base/Lifetime.hpp"
#include "orlan/base/Subscription.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/LocationManager.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// Keeps location updates running for a while after an entry, because an operating system that is not asked
/// where the phone is holds region exits back. Nobody looks at the fixes. An object of its own, since
/// crossings and set-ups both start and stop it. Main thread.
class ExitDetection {
 public:
  static constexpr Duration longest = std::chrono::seconds(600);

  ExitDetection(MainLoop& main, LocationManager& manager, Logger& logger)
      : main_(main), lm_(manager), logger_(logger) {}

  /// Starts the updates; they end by themselves after `longest`. What runs already is neither restarted nor
  /// prolonged.
  void start();
  void stop();
  [[nodiscard]] bool isRunning() const { return isRequestingLocationUpdates_; }

 private:
  MainLoop& main_;
  LocationManager& lm_;
  Logger& logger_;
  bool isRequestingLocationUpdates_ = false;
  Subscription exitCheckTimer_;  // set and cleared on turns of their own
  Lifetime lifetime_;
};

}  // namespace orlan
