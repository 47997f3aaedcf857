#pragma once

#include "orlan/backend/APIService.hpp"
#include "orlan/base/Lazy.hpp"
#include "orlan/geofence/NotificationCounter.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/Clock.hpp"
#include "orlan/platform/KeyValueStore.hpp"
#include "orlan/platform/NotificationCenter.hpp"
#include "orlan/platform/RandomSource.hpp"

namespace orlan {

/// What reacting to an entry or exit takes, the same for both monitors.
struct ReactionServices {
  Clock& clock;
  KeyValueStore& store;
  NotificationCenter& notifications;
  RandomSource& random;
  Logger& logger;
  Lazy<APIService>& api;
  NotificationCounter& counter;
};

}  // namespace orlan
