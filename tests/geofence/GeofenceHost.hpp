#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "geofence/Transcript.hpp"
#include "orlan/backend/APIService.hpp"
#include "orlan/base/Lazy.hpp"
#include "orlan/campaigns/LocationTrackingReliability.hpp"
#include "orlan/geofence/ReactionServices.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan::test {

using namespace std::chrono_literals;

/// Stands where the facade is.
class Counter final : public NotificationCounter {
 public:
  explicit Counter(Transcript& transcript) : transcript_(transcript) {}
  void recordFGNotification(std::string_view activation) override {
    transcript_.note("count FG " + std::string(activation));
  }
  void recordBGNotification(std::string_view activation) override {
    transcript_.note("count BG " + std::string(activation));
  }

 private:
  Transcript& transcript_;
};

/// A simulated phone and the floors below this one, at 2026-01-01 00:00:00 UTC (788918400 s since 2001).
struct GeofenceHost {
  explicit GeofenceHost(sim::PhoneSettings settings = {}) : phone(world, std::move(settings)) {
    phone.observe(transcript);
    phone.http().answer("POST", "/api/activities", {sim::HttpAnswer::reply(200, "{}")});
  }

  [[nodiscard]] ReactionServices services() {
    return {platform.clock, platform.store, platform.notifications, platform.random, logger, api, counter};
  }

  /// What happened since the last look, all that is due now included.
  [[nodiscard]] std::vector<std::string> seen() {
    world.settle();
    return transcript.take();
  }

  sim::World world;
  Transcript transcript;
  sim::SimulatedPhone phone;
  Platform platform = phone.platform();
  Logger logger{platform.clock, platform.console, platform.files, platform.queues};
  Counter counter{transcript};
  Lazy<LocationTrackingReliability> reliability{[this] {
    return std::make_shared<LocationTrackingReliability>(platform.main, platform.queues, platform.clock,
                                                         platform.random, platform.store, logger);
  }};
  Lazy<APIService> api{
      [this] { return std::make_shared<APIService>(platform, BaseUrls::builtIn(), logger, reliability); }};
};

}  // namespace orlan::test
