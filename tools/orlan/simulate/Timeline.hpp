#pragma once

#include <cstddef>
#include <optional>
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
[[nodiscard]] std::vector<Moment> timeline(const Scenario& scenario);

/// When the last walk would have ended, if that is after the scenario's end.
[[nodiscard]] std::optional<Duration> walkBeyondTheEnd(const Scenario& scenario);

}  // namespace orlan::simulate
