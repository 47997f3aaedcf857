#include "bench/Table.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>

#include "orlan/base/json.hpp"

namespace orlan::bench {
namespace {

constexpr std::size_t mostRounds = 9;
constexpr std::chrono::seconds enough{2};  // for one point; one round there is always

struct Scale {
  double factor;
  const char* unit;
};

std::string scaled(double value, std::span<const Scale> scales, Digits digits) {
  const Scale* scale = &scales.front();
  for (const Scale& each : scales) {
    if (std::abs(value) >= each.factor) scale = &each;
  }
  const double number = value / scale->factor;
  if (digits == Digits::few) return fmt::format("{:g} {}", number, scale->unit);
  return fmt::format("{:.{}f} {}", number, number < 10 ? 2 : number < 100 ? 1 : 0, scale->unit);
}

}  // namespace

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

void Row::measure(double size, std::span<const Way> ways) {
  std::vector<std::vector<double>> costs(ways.size());
  std::vector<std::vector<double>> ratios(ways.size());
  const auto begin = std::chrono::steady_clock::now();
  do {
    for (std::size_t i = 0; i < ways.size(); ++i) {
      costs[i].push_back(ways[i].once());
      ratios[i].push_back(costs[i].back() / costs[0].back());
    }
  } while (costs[0].size() < mostRounds && std::chrono::steady_clock::now() - begin < enough);

  Point point{size, {}};
  for (std::size_t i = 0; i < ways.size(); ++i) {
    point.costs.push_back({ways[i].name, median(std::move(costs[i])), median(std::move(ratios[i]))});
  }
  points.push_back(std::move(point));
}

std::optional<double> Row::growth() const {
  if (points.size() < 2) return std::nullopt;
  const Point& last = points.back();
  const Point& before = points[points.size() - 2];
  return std::log(last.costs[0].value / before.costs[0].value) / std::log(last.size / before.size);
}

std::string shown(double value, Unit unit, Digits digits) {
  static constexpr Scale times[] = {{1, "ns"}, {1e3, "us"}, {1e6, "ms"}, {1e9, "s"}};
  static constexpr Scale sizes[] = {{1, "B"}, {1e3, "kB"}, {1e6, "MB"}, {1e9, "GB"}};
  switch (unit) {
    case Unit::nanoseconds:
      return scaled(value, times, digits);
    case Unit::bytes:
      return scaled(value, sizes, digits);
    case Unit::times:
      break;
  }
  return digits == Digits::few ? fmt::format("{:g}x", value) : fmt::format("{:.2f}x", value);
}

std::string shownSize(double size) {
  std::string digits = fmt::format("{:.0f}", size);
  for (auto i = static_cast<std::ptrdiff_t>(digits.size()) - 3; i > 0; i -= 3) {
    digits.insert(static_cast<std::size_t>(i), ",");
  }
  return digits;
}

std::string shownRatio(double ratio) {
  return ratio < 10 ? fmt::format("{:.2f}", ratio) : shownSize(ratio);
}

std::string asText(const Row& row) {
  std::string text = row.work + "\n";
  for (const Point& point : row.points) {
    text += fmt::format("  {:>8} {:<13}", shownSize(point.size), row.axis);
    for (const Cost& cost : point.costs) {
      const bool first = &cost == &point.costs.front();
      text += fmt::format("  {} {}", cost.name, shown(cost.value, row.unit));
      if (!first) text += " (" + shownRatio(cost.ratio) + "x)";
    }
    text += '\n';
  }
  if (const auto exponent = row.growth()) text += fmt::format("  grows with exponent {:.1f}\n", *exponent);
  return text;
}

std::string asJson(const Table& table) {
  json::Array rows;
  for (const Row& row : table) {
    json::Array points;
    for (const Point& point : row.points) {
      json::Array costs;
      for (const Cost& cost : point.costs) {
        costs.emplace_back(json::Object{{"name", cost.name}, {"value", cost.value}, {"ratio", cost.ratio}});
      }
      points.emplace_back(json::Object{{"size", point.size}, {"costs", std::move(costs)}});
    }
    static constexpr std::string_view units[] = {"nanoseconds", "bytes", "times"};
    rows.emplace_back(json::Object{{"work", row.work},
                                   {"axis", row.axis},
                                   {"unit", units[static_cast<std::size_t>(row.unit)]},
                                   {"growth", row.growth()},
                                   {"points", std::move(points)}});
  }
  return json::print(json::Object{{"rows", std::move(rows)}}) + "\n";
}

}  // namespace orlan::bench
