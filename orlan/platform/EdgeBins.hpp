#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "orlan/platform/Cells.hpp"
#include "orlan/platform/Coordinate.hpp"

namespace orlan {

/// The edges of a ring by longitude, so that a question about one longitude looks at few of them. Edge i runs
/// from the vertex before vertex i to vertex i. Memory is linear in the number of edges, whatever their
/// shape.
class EdgeBins {
 public:
  EdgeBins() = default;
  explicit EdgeBins(std::span<const Coordinate> ring);

  /// Each edge that has the longitude between its ends, lower end included, once; others may be among them.
  [[nodiscard]] std::span<const std::uint32_t> at(double longitude) const {
    const std::uint32_t* bin = table_.data() + cells_(longitude);
    return {table_.data() + bin[0], table_.data() + bin[1]};
  }

 private:
  Cells cells_;
  std::vector<std::uint32_t> table_;  // where each bin begins in this very table, the end, then the edges
};

}  // namespace orlan
