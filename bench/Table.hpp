#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace orlan::bench {

enum class Unit { nanoseconds, bytes, times };

/// One way to do the work of a row: does it, and returns what it cost.
struct Way {
  std::string name;
  std::function<double()> once;
};

/// What one way cost, in the row's unit, and how many times the cost of the point's first way that is.
struct Cost {
  std::string name;
  double value = 0.0;
  double ratio = 1.0;
};

/// All ways at one size of the work.
struct Point {
  double size = 0.0;
  std::vector<Cost> costs;  // ours first
};

/// One kind of work, at growing sizes.
struct Row {
  std::string work;
  std::string axis;  // what `size` counts: "polygons"
  Unit unit = Unit::nanoseconds;
  std::vector<Point> points;

  /// Lets the ways take turns, round by round, and takes the median of each and of its ratio to the first.
  void measure(double size, std::span<const Way> ways);
  void measure(double size, std::initializer_list<Way> ways) { measure(size, std::span(ways)); }

  /// A value that was measured elsewhere, with nothing to compare.
  void add(double size, double value) { points.push_back({size, {{"ours", value, 1.0}}}); }

  /// The exponent by which the first way grew between the last two sizes: 1 is linear.
  [[nodiscard]] std::optional<double> growth() const;
};

/// Rows stay where they are.
using Table = std::deque<Row>;

[[nodiscard]] double median(std::vector<double> values);

enum class Digits { three, few };

/// "12.3 ms", "4.50 MB", "2.50x"; with few digits "10 ms".
[[nodiscard]] std::string shown(double value, Unit unit, Digits digits = Digits::three);

/// "1,000".
[[nodiscard]] std::string shownSize(double size);

/// "2.50", "25", "2,500".
[[nodiscard]] std::string shownRatio(double ratio);

[[nodiscard]] std::string asText(const Row& row);
[[nodiscard]] std::string asJson(const Table& table);

/// One page that needs nothing else: each row with its plot.
[[nodiscard]] std::string asPage(const Table& table);

}  // namespace orlan::bench
