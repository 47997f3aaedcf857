#pragma once

#include <cstddef>
#include <vector>

#include "orlan/base/Time.hpp"
#include "tools/orlan/simulate/Steps.hpp"

namespace orlan::simulate {

/// A way on the ground with the time at which each of its points is reached.
struct Waypoint {
  Fix fix;
  double seconds = 0.0;  // since the first point; never decreasing
};
using Walk = std::vector<Waypoint>;

/// The same way at an even speed (metres a second, positive). A stretch whose length cannot be measured takes
/// no time.
[[nodiscard]] Walk atSpeed(Walk way, double speed);

/// How many fixes `cut` would make of it.
[[nodiscard]] double countFixes(const Walk& walk, Duration interval);

/// Where the walker is at each interval from the start until the end is reached, both included. Between two
/// points the position lies on the straight line in degrees; the accuracy is that of the point behind.
[[nodiscard]] std::vector<Fix> cut(const Walk& walk, Duration interval);

}  // namespace orlan::simulate
