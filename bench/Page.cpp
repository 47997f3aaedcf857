// The table as a page: a section a row, its numbers beside a plot on logarithmic axes.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "bench/Table.hpp"

namespace orlan::bench {
namespace {

constexpr std::array<const char*, 4> colours{"#0b7a55", "#c2410c", "#1d4ed8", "#7c3aed"};

constexpr const char* head = R"(<!doctype html>
<html lang="en"><head><meta charset="utf-8"><meta name="viewport" content="width=device-width,initial-scale=1">
<title>What it costs</title><style>
:root{color-scheme:light}
body{font:15px/1.45 system-ui,sans-serif;color:#1c1917;background:#fafaf9;margin:0 auto;padding:20px 16px 40px;max-width:1120px}
h1{font-size:24px;margin:0 0 4px}h2{font-size:17px;margin:0 0 10px}p{margin:0 0 18px;color:#57534e;max-width:46em}
.all{margin:0 0 24px}.all a{color:inherit}
section{background:#fff;border:1px solid #e7e5e4;border-radius:8px;padding:16px;margin:0 0 16px;display:grid;gap:8px 28px}
section>h2{grid-column:1/-1;margin-bottom:2px}
table{border-collapse:collapse;width:100%;font-variant-numeric:tabular-nums;align-self:start}
th,td{text-align:right;padding:5px 0 5px 10px;border-bottom:1px solid #e7e5e4;vertical-align:top}
td{white-space:nowrap}small,td:first-child{white-space:normal}
th:first-child,td:first-child{text-align:left;padding-left:0}th{font-weight:600;font-size:13px;vertical-align:bottom}
small{display:block;color:#78716c;font-size:12px}.note{color:#57534e;font-size:13px;margin:8px 0 0}
svg{width:100%;max-width:460px;display:block}svg text{font-size:12px;fill:#57534e}
section>div{min-width:0;overflow-x:auto}
i{display:block;width:10px;height:10px;border-radius:5px;margin:0 0 3px auto}
@media(max-width:480px){td{font-size:14px}th{font-size:12px}th,td{padding-left:6px}}
@media(min-width:820px){section{grid-template-columns:minmax(0,1fr) 440px}}
</style></head><body><h1>What it costs</h1>
<p>Ours beside its peers, in one process and in turns: medians of rounds. Small under each peer stands how many times
ours it costs, in the same round: above 1 ours is the faster. Absolute times move from run to run, the ratios hardly. Both axes of a plot are logarithmic; the dotted line is
cost that grows as the work does.</p>
)";

std::string escaped(std::string_view text) {
  std::string safe;
  for (const char each : text) {
    switch (each) {
      case '<':
        safe += "&lt;";
        break;
      case '&':
        safe += "&amp;";
        break;
      default:
        safe += each;
    }
  }
  return safe;
}

/// Where values of a row lie on its plot.
class Axes {
 public:
  static constexpr double width = 360, height = 236, left = 60, right = 346, top = 10, bottom = 196;

  explicit Axes(const Row& row) : firstSize_(row.points.front().size), lastSize_(row.points.back().size) {
    double least = row.points[0].costs[0].value;
    double most = least;
    for (const Point& point : row.points) {
      for (const Cost& cost : point.costs) {
        least = std::min(least, cost.value);
        most = std::max(most, cost.value);
      }
    }
    low_ = static_cast<int>(std::floor(std::log10(least)));
    high_ = std::max(low_ + 1, static_cast<int>(std::ceil(std::log10(most))));
  }

  [[nodiscard]] double x(double size) const {
    return left + (right - left) * std::log(size / firstSize_) / std::log(lastSize_ / firstSize_);
  }
  [[nodiscard]] double y(double value) const {
    return bottom - (bottom - top) * (std::log10(value) - low_) / (high_ - low_);
  }
  [[nodiscard]] int low() const { return low_; }
  [[nodiscard]] int high() const { return high_; }

 private:
  double firstSize_, lastSize_;
  int low_ = 0, high_ = 1;  // powers of ten
};

std::string grid(const Row& row, const Axes& axes) {
  std::string svg;
  for (int power = axes.low(); power <= axes.high(); ++power) {
    const double value = std::pow(10.0, power);
    const double y = axes.y(value);
    svg += fmt::format(R"(<path d="M{:.1f} {:.1f}H{:.1f}" stroke="#e7e5e4"/>)", Axes::left, y, Axes::right);
    svg += fmt::format(R"(<text x="{:.1f}" y="{:.1f}" text-anchor="end">{}</text>)", Axes::left - 6, y + 4,
                       shown(value, row.unit, Digits::few));
  }
  for (const Point& point : row.points) {
    const bool last = &point == &row.points.back();
    svg += fmt::format(R"(<text x="{:.1f}" y="{:.1f}" text-anchor="{}">{}</text>)", axes.x(point.size),
                       Axes::bottom + 18, last ? "end" : "middle", shownSize(point.size));
  }
  return svg;
}

/// From our first point on, as long as it stays on the plot.
std::string linear(const Row& row, const Axes& axes) {
  const double size = row.points.front().size;
  const double value = row.points.front().costs.front().value;
  const double times = std::min(row.points.back().size / size, std::pow(10.0, axes.high()) / value);
  return fmt::format(
      R"(<path d="M{:.1f} {:.1f}L{:.1f} {:.1f}" stroke="#a8a29e" stroke-dasharray="2 4" fill="none"/>)",
      axes.x(size), axes.y(value), axes.x(size * times), axes.y(value * times));
}

std::string series(const Row& row, const Axes& axes, std::size_t way) {
  std::string line;
  std::string dots;
  for (const Point& point : row.points) {
    if (way >= point.costs.size()) continue;
    const double x = axes.x(point.size);
    const double y = axes.y(point.costs[way].value);
    line += fmt::format("{}{:.1f} {:.1f}", line.empty() ? "M" : "L", x, y);
    dots += fmt::format(R"(<circle cx="{:.1f}" cy="{:.1f}" r="3.2" fill="{}"/>)", x, y, colours[way]);
  }
  return fmt::format(R"(<path d="{}" stroke="{}" stroke-width="2" fill="none"/>)", line, colours[way]) + dots;
}

std::string plot(const Row& row) {
  if (row.points.size() < 2) return {};
  const Axes axes(row);
  std::string svg = fmt::format(R"(<svg viewBox="0 0 {} {}" role="img" aria-label="{} by {}">)", Axes::width,
                                Axes::height, escaped(row.work), row.axis);
  svg += grid(row, axes) + linear(row, axes);
  for (std::size_t way = row.points.front().costs.size(); way-- > 0;) svg += series(row, axes, way);
  svg += fmt::format(R"(<text x="{:.1f}" y="{:.1f}" text-anchor="end">{}</text></svg>)", Axes::right,
                     Axes::bottom + 36, row.axis);
  return svg + "\n";
}

std::string numbers(const Row& row) {
  std::string html = "<table><tr><th>" + escaped(row.axis) + "</th>";
  const auto& ways = row.points.front().costs;
  for (std::size_t way = 0; way < ways.size(); ++way) {
    html += fmt::format(R"(<th><i style="background:{}"></i>{}</th>)", colours[way], escaped(ways[way].name));
  }
  html += "</tr>\n";
  for (const Point& point : row.points) {
    html += "<tr><td>" + shownSize(point.size) + "</td>";
    for (const Cost& cost : point.costs) {
      html += "<td>" + shown(cost.value, row.unit);
      if (&cost != &point.costs.front()) {
        html += "<small>" + shownRatio(cost.ratio) + "x</small>";
      }
      html += "</td>";
    }
    html += "</tr>\n";
  }
  html += "</table>\n";
  if (const auto exponent = row.growth()) {
    html += fmt::format("<p class=\"note\">Ours grows with exponent {:.1f} at the end; 1 is linear.</p>\n",
                        *exponent);
  }
  return html;
}

/// Each row at its largest size, beside the best of its peers.
std::string overview(const Table& table) {
  std::string html = "<table class=\"all\"><tr><th>at its largest</th><th>ours</th><th>best peer</th></tr>\n";
  std::size_t number = 0;
  for (const Row& row : table) {
    const Point& point = row.points.back();
    html += fmt::format("<tr><td><a href=\"#row{}\">{}</a><small>{} {}</small></td><td>{}</td><td>", number++,
                        escaped(row.work), shownSize(point.size), escaped(row.axis),
                        shown(point.costs.front().value, row.unit));
    const auto best = std::min_element(point.costs.begin() + 1, point.costs.end(),
                                       [](const Cost& a, const Cost& b) { return a.ratio < b.ratio; });
    if (best != point.costs.end()) {
      html += shownRatio(best->ratio) + "x<small>" + escaped(best->name) + "</small>";
    }
    html += "</td></tr>\n";
  }
  return html + "</table>\n";
}

}  // namespace

std::string asPage(const Table& table) {
  std::string html = head + overview(table);
  for (std::size_t i = 0; i < table.size(); ++i) {
    const Row& row = table[i];
    html += fmt::format("<section id=\"row{}\"><h2>{}</h2>\n<div>{}</div>{}</section>\n", i,
                        escaped(row.work), numbers(row), plot(row));
  }
  return html + "</body></html>\n";
}

}  // namespace orlan::bench
