#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "orlan/base/Time.hpp"
#include "orlan/platform/Coordinate.hpp"

namespace orlan::simulate {

/// A position as a scenario gives it; when it is taken follows from the step.
struct Fix {
  Coordinate coordinate;  // degrees
  double accuracy = 5.0;  // metres
};

/// A way on the ground with the time at which each of its points is reached.
struct Waypoint {
  Fix fix;
  double seconds = 0.0;  // since the first point; never decreasing
};
using Walk = std::vector<Waypoint>;

/// The same way at an even speed (metres a second, positive). A stretch whose length cannot be measured takes
/// no time.
[[nodiscard]] Walk atSpeed(Walk way, double speed);

/// A walk as a phone sees it: where the walker is at each interval from the start until the end is reached,
/// both included. Between two points the position lies on the straight line in degrees; the accuracy is that
/// of the point behind. A fix is made when it is asked for, so that a long walk takes no more memory than its
/// points.
struct Track {
  Duration interval{};
  Walk way;

  /// How many fixes it has, also when no integer holds their number.
  [[nodiscard]] double countFixes() const;
  [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(countFixes()); }

  /// Fix number `index`, from 0, and when it is taken, since the first.
  [[nodiscard]] Fix fix(std::size_t index) const;
  [[nodiscard]] Duration time(std::size_t index) const { return interval * static_cast<std::int64_t>(index); }
};

}  // namespace orlan::simulate
