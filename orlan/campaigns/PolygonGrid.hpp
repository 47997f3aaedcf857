#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "orlan/platform/Cells.hpp"
#include "orlan/platform/Polygon.hpp"

namespace orlan {

/// A uniform grid over the containment boxes of many polygons: which of them can contain a point at all.
class PolygonGrid {
 public:
  PolygonGrid() = default;
  explicit PolygonGrid(std::span<const Polygon::Box> boxes);

  /// Every box that contains the point is in one of the two, once; others may be. Both ascend.
  struct Candidates {
    std::span<const std::uint32_t> here;
    std::span<const std::uint32_t> everywhere;  // boxes too large for the grid
  };
  [[nodiscard]] Candidates at(Coordinate point) const;

 private:
  struct Reach;  // the cells a box covers

  [[nodiscard]] Reach reachOf(const Polygon::Box& box) const;
  void cut(std::span<const Polygon::Box> boxes);

  Cells rows_;                         // by latitude
  Cells columns_;                      // by longitude
  std::vector<std::uint32_t> starts_;  // of each cell in items_, and the end
  std::vector<std::uint32_t> items_;
  std::vector<std::uint32_t> everywhere_;
};

}  // namespace orlan
