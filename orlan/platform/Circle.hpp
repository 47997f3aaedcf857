#pragma once

#include <string>

#include "orlan/platform/Coordinate.hpp"

namespace orlan {

/// A circle on the ground.
struct Circle {
  Coordinate centre;    // degrees
  double radius = 0.0;  // metres

  friend bool operator==(const Circle&, const Circle&) = default;
};

/// A circle that the operating system watches, known by its identifier; a second one with the same identifier
/// replaces the first.
struct CircularRegion {
  std::string identifier;
  Circle circle;
  bool notifyOnEntry = true;
  bool notifyOnExit = true;

  friend bool operator==(const CircularRegion&, const CircularRegion&) = default;
};

}  // namespace orlan
