#pragma once

#include <atomic>
#include <utility>

#include "orlan/platform/Clock.hpp"
#include "phones/simulated/TimeZone.hpp"
#include "phones/simulated/World.hpp"

namespace orlan::sim {

/// The wall clock of one phone: the world's, and its own jumps.
class SimulatedClock final : public Clock {
 public:
  SimulatedClock(const World& world, TimeZone zone) : world_(world), zone_(std::move(zone)) {}

  [[nodiscard]] TimePoint now() const override { return world_.wallClock() + jumped_.load(); }
  [[nodiscard]] std::chrono::seconds offsetFromUtc(TimePoint time) const override {
    return zone_.offsetAt(time);
  }

  /// The wall clock of this phone jumps; timers do not.
  void set(TimePoint time) { jumped_ = time - world_.wallClock(); }

 private:
  const World& world_;
  TimeZone zone_;
  std::atomic<Duration> jumped_{Duration::zero()};
};

}  // namespace orlan::sim
