#pragma once

#include <chrono>
#include <mutex>

#include "orlan/base/Time.hpp"
#include "orlan/platform/Clock.hpp"

namespace orlan::linuxphone {

/// Where every clock and every timer of one phone takes its time from, so that they never disagree. Any
/// thread.
class TimeSource {
 public:
  virtual ~TimeSource() = default;

  /// The wall clock.
  [[nodiscard]] virtual TimePoint wallNow() const = 0;

  /// Time since some start; never goes back.
  [[nodiscard]] virtual Duration monotonicNow() const = 0;

  /// How long a thread must sleep for `phoneTime` to pass (zero or more); never too short.
  [[nodiscard]] virtual std::chrono::nanoseconds realTime(Duration phoneTime) const = 0;
};

/// The machine's own clocks.
class RealTime final : public TimeSource {
 public:
  [[nodiscard]] TimePoint wallNow() const override;
  [[nodiscard]] Duration monotonicNow() const override;
  [[nodiscard]] std::chrono::nanoseconds realTime(Duration phoneTime) const override;
};

/// Time that runs `scale` times as fast as real time, wall clock and timers alike: a ride of an hour and a
/// half replays in seconds, and every cooldown, timer and timestamp still fits the others. What waits for the
/// world outside (the network) keeps real time.
class ReplayTime final : public TimeSource {
 public:
  /// `scale` is clamped to 0.001 … 1,000,000 (not-a-number: 1); the wall clock starts at `start`.
  ReplayTime(double scale, TimePoint start);

  /// Time goes on from where it is at another pace. On the main thread of the loop that sleeps by it.
  void setScale(double scale);

  [[nodiscard]] TimePoint wallNow() const override;
  [[nodiscard]] Duration monotonicNow() const override;
  [[nodiscard]] std::chrono::nanoseconds realTime(Duration phoneTime) const override;

 private:
  /// The stretch of time that began with the last change of pace.
  struct Pace {
    double scale;
    Duration begun{};  // monotonic
    std::chrono::steady_clock::time_point begunAt = std::chrono::steady_clock::now();
  };
  [[nodiscard]] Duration elapsed(const Pace& pace) const;

  const TimePoint start_;
  mutable std::mutex mutex_;
  Pace pace_;
};

/// The wall clock of a time source in the machine's time zone.
class SystemClock final : public Clock {
 public:
  explicit SystemClock(const TimeSource& time) : time_(time) {}

  [[nodiscard]] TimePoint now() const override { return time_.wallNow(); }
  [[nodiscard]] std::chrono::seconds offsetFromUtc(TimePoint time) const override;

 private:
  const TimeSource& time_;
};

}  // namespace orlan::linuxphone
