#pragma once

#include "orlan/base/Time.hpp"
#include "orlan/platform/Coordinate.hpp"

namespace orlan {

/// One position fix.
struct Location {
  Coordinate coordinate;             // degrees
  double horizontalAccuracy = -1.0;  // metres; negative: the coordinate is not valid
  TimePoint timestamp;               // when the fix was taken, not when it arrived

  friend bool operator==(const Location&, const Location&) = default;
};

}  // namespace orlan
