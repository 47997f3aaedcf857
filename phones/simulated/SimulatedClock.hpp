#pragma once

#include <atomic>
#include <functional>
#include <utility>

#include "orlan/platform/Clock.hpp"
#include "phones/simulated/World.hpp"

namespace orlan::sim {

/// How far local time is ahead of UTC at a time. Asked on any thread that asks the clock; none: UTC.
using UtcOffset = std::function<std::chrono::seconds(TimePoint)>;

/// The wall clock of one phone: the world's, and its own jumps.
class SimulatedClock final : public Clock {
 public:
  SimulatedClock(const World& world, UtcOffset offset) : world_(world), offset_(std::move(offset)) {}

  [[nodiscard]] TimePoint now() const override { return world_.wallClock() + jumped_.load(); }
  [[nodiscard]] std::chrono::seconds offsetFromUtc(TimePoint time) const override {
    return offset_ ? offset_(time) : std::chrono::seconds(0);
  }

  /// The wall clock of this phone jumps; timers do not.
  void set(TimePoint time) { jumped_ = time - world_.wallClock(); }

 private:
  const World& world_;
  const UtcOffset offset_;
  std::atomic<Duration> jumped_{Duration::zero()};
};

}  // namespace orlan::sim
