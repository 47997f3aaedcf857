#include "orlan/campaigns/PolygonGrid.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace orlan {

namespace {

constexpr std::size_t cellsPerBox = 16;     // at most, on average: bounds the memory of the empty grid
constexpr std::uint32_t largestReach = 64;  // cells; a box that covers more is looked at every time

bool isEmpty(const Polygon::Box& box) {
  return !(box.longitude.min < box.longitude.max);
}

bool isFinite(const Polygon::Box& box) {
  return std::isfinite(box.longitude.min) && std::isfinite(box.longitude.max) &&
         std::isfinite(box.minLatitude) && std::isfinite(box.maxLatitude);
}

/// Where the boxes lie along one axis.
struct Axis {
  double first = std::numeric_limits<double>::infinity();
  double last = -std::numeric_limits<double>::infinity();
  double sum = 0.0;  // of their extents
  std::size_t count = 0;

  void add(double from, double to) {
    first = std::min(first, from);
    last = std::max(last, to);
    sum += to - from;
    ++count;
  }

  /// Cells of about half a mean box.
  [[nodiscard]] double wantedCells() const {
    const double cells = 2.0 * static_cast<double>(count) * (last - first) / sum;
    return cells >= 1.0 ? std::min(cells, 1e6) : 1.0;  // not-a-number is one cell too
  }
};

}  // namespace

struct PolygonGrid::Reach {
  std::uint32_t top, bottom, left, right;  // inclusive

  [[nodiscard]] std::size_t cells() const {
    return (std::size_t{bottom - top} + 1) * (std::size_t{right - left} + 1);
  }

  template <class Visit>
  void forEach(const Cells& columns, Visit visit) const {
    for (std::uint32_t row = top; row <= bottom; ++row) {
      for (std::uint32_t column = left; column <= right; ++column) {
        visit(std::size_t{row} * columns.count() + column);
      }
    }
  }
};

PolygonGrid::Reach PolygonGrid::reachOf(const Polygon::Box& box) const {
  return {rows_(box.minLatitude), rows_(box.maxLatitude), columns_(box.longitude.min),
          columns_(box.longitude.max)};
}

void PolygonGrid::cut(std::span<const Polygon::Box> boxes) {
  Axis latitudes;
  Axis longitudes;
  for (const auto& box : boxes) {
    if (isEmpty(box) || !isFinite(box)) continue;
    latitudes.add(box.minLatitude, box.maxLatitude);
    longitudes.add(box.longitude.min, box.longitude.max);
  }
  if (latitudes.count == 0) return;
  const double rows = latitudes.wantedCells();
  const double columns = longitudes.wantedCells();
  const double most = static_cast<double>(cellsPerBox * latitudes.count);
  const double shrink = std::min(1.0, std::sqrt(most / (rows * columns)));
  const auto whole = [&](double cells) {
    return static_cast<std::uint32_t>(std::clamp(cells * shrink, 1.0, most));
  };
  rows_ = Cells(latitudes.first, latitudes.last, whole(rows));
  columns_ = Cells(longitudes.first, longitudes.last, whole(columns));
}

PolygonGrid::PolygonGrid(std::span<const Polygon::Box> boxes) {
  cut(boxes);
  starts_.assign(std::size_t{rows_.count()} * columns_.count() + 1, 0);
  std::vector<std::uint32_t> placed;
  std::size_t entries = 0;
  for (std::uint32_t i = 0; i < boxes.size(); ++i) {
    if (isEmpty(boxes[i])) continue;
    const Reach reach = reachOf(boxes[i]);
    if (reach.cells() > largestReach) {
      everywhere_.push_back(i);
      continue;
    }
    placed.push_back(i);
    entries += reach.cells();
    reach.forEach(columns_, [&](std::size_t cell) { ++starts_[cell]; });
  }

  std::uint32_t end = 0;
  for (auto& start : starts_) start = end += start;
  items_.resize(entries);
  for (auto i = placed.rbegin(); i != placed.rend(); ++i) {  // backwards: each cell's list then ascends
    reachOf(boxes[*i]).forEach(columns_, [&](std::size_t cell) { items_[--starts_[cell]] = *i; });
  }
}

PolygonGrid::Candidates PolygonGrid::at(Coordinate point) const {
  if (starts_.empty()) return {};
  const std::size_t cell = std::size_t{rows_(point.latitude)} * columns_.count() + columns_(point.longitude);
  return {std::span(items_).subspan(starts_[cell], starts_[cell + 1] - starts_[cell]), everywhere_};
}

}  // namespace orlan
