#pragma once

#include <cmath>
#include <cstdint>

namespace orlan {

/// Cuts a stretch of the number line into equal cells, 0 to count - 1. Monotone: of two numbers, infinite
/// ones included, the greater never has the lower cell; what lies beyond an end has the cell at that end. So
/// an interval entered in every cell from its first number's to its last number's is found by each number in
/// it.
class Cells {
 public:
  /// One cell for everything.
  Cells() = default;

  /// `first <= last`, both finite. Falls back to one cell where the stretch cannot be cut.
  Cells(double first, double last, std::uint32_t count) {
    const double scale = count / (last - first);
    if (count < 2 || !(scale > 0.0) || !std::isfinite(scale)) return;
    first_ = first;
    scale_ = scale;
    count_ = count;
  }

  [[nodiscard]] std::uint32_t count() const { return count_; }

  /// Not-a-number gets cell 0.
  [[nodiscard]] std::uint32_t operator()(double value) const {
    const double cell = (value - first_) * scale_;
    if (!(cell > 0.0)) return 0;
    return cell < count_ ? static_cast<std::uint32_t>(cell) : count_ - 1;
  }

 private:
  double first_ = 0.0;
  double scale_ = 0.0;
  std::uint32_t count_ = 1;
};

}  // namespace orlan
