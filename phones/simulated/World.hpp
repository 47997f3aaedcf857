#pragma once

#include <cstdint>
#include <memory>

#include "orlan/base/Time.hpp"
#include "phones/simulated/Scheduler.hpp"

namespace orlan::sim {

struct WorldSettings {
  TimePoint start = std::chrono::sys_days(std::chrono::January / 1 / 2026);  // the wall clock at second 0
  std::uint64_t seed = 1;                                                    // of every random choice
};

/// One virtual time and one seed for any number of simulated phones. Time passes only inside the `run`
/// functions and costs nothing; equal deadlines run in the order of posting, whichever phone they are of, so
/// that every run is the same. Used on the thread that made it, outside any task. Outlives its phones.
class World {
 public:
  explicit World(WorldSettings settings = {});

  /// Virtual time since second 0. It never jumps.
  [[nodiscard]] Duration now() const { return scheduler_->now(); }

  void runFor(Duration duration);

  /// Runs all that is due up to and including `time`; then it is `time`.
  void runUntil(Duration time) { scheduler_->runUntil(time); }

  /// Runs all that is due at this instant, and what that posts for this instant.
  void settle() { runUntil(now()); }

  /// The wall clock that every phone starts with; it jumps without the timers.
  [[nodiscard]] TimePoint wallClock() const { return start_ + now() + jumped_; }
  void setWallClock(TimePoint time) { jumped_ += time - wallClock(); }

  // For the phones.
  [[nodiscard]] const std::shared_ptr<Scheduler>& scheduler() const { return scheduler_; }
  /// A seed of its own for each phone, in the order of their making.
  [[nodiscard]] std::uint64_t nextSeed();

 private:
  std::shared_ptr<Scheduler> scheduler_ = std::make_shared<Scheduler>();
  TimePoint start_;
  Duration jumped_{};
  std::uint64_t seed_;
  std::uint64_t phones_ = 0;
};

}  // namespace orlan::sim
