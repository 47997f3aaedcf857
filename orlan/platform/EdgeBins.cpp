#include "orlan/platform/EdgeBins.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace orlan {

namespace {

/// Calls `visit(i, lower, upper)` for each edge that some longitude lies on. An edge along a meridian is
/// straddled by none, and one with an end that is not a number crosses nothing.
template <class Visit>
void forEachEdge(std::span<const Coordinate> ring, Visit visit) {
  double before = ring.empty() ? 0.0 : ring.back().longitude;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const double here = ring[i].longitude;
    if (before < here) visit(static_cast<std::uint32_t>(i), before, here);
    if (here < before) visit(static_cast<std::uint32_t>(i), here, before);
    before = here;
  }
}

Cells cut(std::span<const Coordinate> ring, std::uint32_t count) {
  double first = std::numeric_limits<double>::infinity();
  double last = -first;
  for (const Coordinate& vertex : ring) {
    if (!std::isfinite(vertex.longitude)) continue;
    first = std::min(first, vertex.longitude);
    last = std::max(last, vertex.longitude);
  }
  return first <= last ? Cells(first, last, count) : Cells();
}

/// How many entries the edges need in all bins together.
std::size_t entriesFor(std::span<const Coordinate> ring, const Cells& cells) {
  std::size_t entries = 0;
  forEachEdge(ring,
              [&](std::uint32_t, double lower, double upper) { entries += cells(upper) - cells(lower) + 1; });
  return entries;
}

}  // namespace

EdgeBins::EdgeBins(std::span<const Coordinate> ring) {
  // Rings that run to and fro enter each edge in many bins: fewer bins then, so that memory stays linear.
  const std::size_t limit = 8 * ring.size();
  std::size_t entries = 0;
  for (auto count = static_cast<std::uint32_t>(ring.size() / 2);; count /= 2) {
    cells_ = cut(ring, count);
    entries = entriesFor(ring, cells_);
    if (entries <= limit || cells_.count() == 1) break;
  }

  const std::size_t starts = cells_.count() + std::size_t{1};
  table_.assign(starts + entries, 0);
  forEachEdge(ring, [&](std::uint32_t, double lower, double upper) {
    for (std::uint32_t cell = cells_(lower); cell <= cells_(upper); ++cell) ++table_[cell];
  });
  auto end = static_cast<std::uint32_t>(starts);
  for (std::size_t cell = 0; cell < starts; ++cell) table_[cell] = end += table_[cell];
  forEachEdge(ring, [&](std::uint32_t edge, double lower, double upper) {
    for (std::uint32_t cell = cells_(lower); cell <= cells_(upper); ++cell) table_[--table_[cell]] = edge;
  });
}

}  // namespace orlan
