#pragma once

#include <cstddef>
#include <optional>
#include <queue>
#include <tuple>
#include <vector>

#include "tools/orlan/simulate/Scenario.hpp"

namespace orlan::simulate {

/// One thing to do at one time: a step, or one fix of a walk that a step began.
struct Moment {
  Duration at{};
  std::size_t step = 0;  // index
  std::size_t fix = 0;   // of a walk
};

/// All moments up to the scenario's end in their order; at the same time, in the order of their steps.
class Timeline {
 public:
  /// The scenario outlives it.
  explicit Timeline(const Scenario& scenario);

  /// How many there are in all.
  [[nodiscard]] std::size_t size() const { return size_; }

  /// Nothing behind the last one.
  [[nodiscard]] std::optional<Moment> next();

 private:
  struct Later {
    bool operator()(const Moment& a, const Moment& b) const {
      return std::tie(a.at, a.step) > std::tie(b.at, b.step);
    }
  };
  void await(std::size_t index, std::size_t fix);

  const Scenario& scenario_;
  std::size_t size_ = 0;
  std::priority_queue<Moment, std::vector<Moment>, Later> due_;  // of each step, what comes next
};

/// When the last walk would have ended, if that is after the scenario's end.
[[nodiscard]] std::optional<Duration> walkBeyondTheEnd(const Scenario& scenario);

}  // namespace orlan::simulate
