#pragma once

#include <algorithm>
#include <functional>
#include <utility>

#include "bench/Timing.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan::bench {

/// A phone's main loop that remembers how long its longest turn took: what the person in front of it feels.
class TimedLoop final : public MainLoop {
 public:
  explicit TimedLoop(MainLoop& phone) : phone_(phone) {}

  void async(std::function<void()> task) override { phone_.async(timed(std::move(task))); }
  [[nodiscard]] bool isCurrent() const override { return phone_.isCurrent(); }
  [[nodiscard]] Subscription after(Duration delay, std::function<void()> task) override {
    return phone_.after(delay, timed(std::move(task)));
  }
  [[nodiscard]] Subscription every(Duration interval, std::function<void()> task) override {
    return phone_.every(interval, timed(std::move(task)));
  }

  /// A call of the host's, or a signal of the phone's, as the turn that it is.
  void turn(const std::function<void()>& call) {
    const double begin = threadTime();
    call();
    longest_ = std::max(longest_, threadTime() - begin);
  }

  /// Nanoseconds of the longest turn since the last time this was asked.
  [[nodiscard]] double takeLongest() { return std::exchange(longest_, 0.0); }

 private:
  std::function<void()> timed(std::function<void()> task) {
    return [this, task = std::move(task)] { turn(task); };
  }

  MainLoop& phone_;
  double longest_ = 0.0;
};

}  // namespace orlan::bench
