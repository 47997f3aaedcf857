#pragma once

#include <vector>

#include "orlan/platform/EdgeBins.hpp"
#include "orlan/platform/Place.hpp"
#include "orlan/platform/Polygon.hpp"

namespace orlan {

/// What all copies of a polygon share: its vertices and what spares looking at most of them.
struct Polygon::Shape {
  explicit Shape(std::vector<Coordinate> ring);

  std::vector<Coordinate> vertices;
  Box box;
  Box vertexBox;
  Place centre;
  EdgeBins bins;
};

/// Whether a point lies in a containment box; half-open both ways. Not-a-number lies in none.
[[nodiscard]] inline bool boxContains(const Polygon::Box& box, Coordinate point) {
  return (box.longitude.min <= point.longitude) & (point.longitude < box.longitude.max) &
         (box.minLatitude <= point.latitude) & (point.latitude < box.maxLatitude);
}

}  // namespace orlan
