#include "tools/orlan/report/TimelineView.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <tuple>

#include "tools/orlan/report/Html.hpp"

namespace orlan::report {

namespace {

constexpr double sheetWidth = 960.0;
constexpr double left = 110.0;  // room for the lanes' names
constexpr double laneHeight = 34.0;
constexpr int lanes = 5;
constexpr int ticks = 6;

class Axis {
 public:
  explicit Axis(Duration length) : length_(std::max(seconds(length), 1.0)) {}
  [[nodiscard]] double x(Duration at) const {
    return left + (sheetWidth - left - 20.0) * std::clamp(seconds(at) / length_, 0.0, 1.0);
  }
  [[nodiscard]] Duration tick(int i) const { return fromSeconds(length_ * i / ticks); }

 private:
  double length_;
};

double laneMiddle(int lane) {
  return laneHeight * (lane + 0.5) + 6.0;
}

bool failed(const Request& request) {
  return request.outcome.size() != 3 || request.outcome.front() != '2';
}

std::string backgroundBands(const ReportData& data, const Axis& axis) {
  std::string out;
  for (const Stretch& stretch : data.inBackground) {
    out += fmt::format(
        R"(<rect class="pocket" x="{}" y="4" width="{}" height="{}"><title>in the background {} to {}</title></rect>)",
        number(axis.x(stretch.from)), number(axis.x(stretch.to) - axis.x(stretch.from)),
        number(laneHeight * lanes), data.clockTime(stretch.from), data.clockTime(stretch.to));
  }
  return out;
}

std::string insideBars(const ReportData& data, const Axis& axis) {
  std::string out;
  std::map<std::tuple<std::int64_t, std::int64_t, std::string>, const Crossing*> since;
  const auto bar = [&](const Crossing& entry, Duration to) {
    const Duration from = entry.at;
    out += fmt::format(
        R"(<rect class="inside {}" x="{}" y="{}" width="{}" height="14"><title>{} {} to {}</title></rect>)",
        escaped(entry.monitor), number(axis.x(from)),
        number(laneMiddle(entry.monitor == "background" ? 1 : 0) - 7),
        number(std::max(2.0, axis.x(to) - axis.x(from))), escaped(entry.campaign), data.clockTime(from),
        data.clockTime(to));
  };
  for (const Crossing& crossing : data.crossings) {
    const std::tuple key{crossing.campaignId, crossing.locationId, crossing.monitor};
    if (crossing.entry) {
      since.emplace(key, &crossing);
    } else if (const auto found = since.find(key); found != since.end()) {
      bar(*found->second, crossing.at);
      since.erase(found);
    }
  }
  for (const auto& [key, entry] : since) bar(*entry, data.length);
  return out;
}

std::string dots(const ReportData& data, const Axis& axis) {
  std::string out;
  const auto dot = [&](int lane, std::string_view kind, Duration at, const std::string& title) {
    out += fmt::format(R"(<circle class="dot {}" cx="{}" cy="{}" r="4.5"><title>{} {}</title></circle>)",
                       kind, number(axis.x(at)), number(laneMiddle(lane)), data.clockTime(at), title);
  };
  for (const Notification& n : data.notifications)
    dot(2, "notification", n.at, escaped(n.request.content.title));
  for (const Request& r : data.requests) {
    dot(3, failed(r) ? "failed" : "request", r.at, escaped(r.method + " " + r.path + " " + r.outcome));
  }
  for (const Moment& m : data.moments) dot(4, escaped(m.kind), m.at, escaped(m.text));
  return out;
}

}  // namespace

std::string timelineView(const ReportData& data) {
  const Axis axis(data.length);
  const double bottom = laneHeight * lanes + 12.0;
  std::string out =
      fmt::format(R"(<svg class="timeline" viewBox="0 0 {} {}" role="img" aria-label="Timeline">)",
                  sheetWidth, bottom + 24.0);
  out += backgroundBands(data, axis);
  constexpr std::string_view names[] = {"foreground", "background", "notifications", "requests", "moments"};
  for (int lane = 0; lane < lanes; ++lane) {
    out += fmt::format(
        R"(<text class="lane" x="14" y="{}">{}</text><line class="rule" x1="{}" y1="{}" x2="{}" y2="{}"/>)",
        number(laneMiddle(lane) + 4), names[lane], left, number(laneMiddle(lane)), sheetWidth - 20,
        number(laneMiddle(lane)));
  }
  for (int i = 0; i <= ticks; ++i) {
    out += fmt::format(R"(<text class="tick{}" x="{}" y="{}">{}</text>)", i == ticks ? " last" : "",
                       number(axis.x(axis.tick(i))), bottom + 14, data.clockTime(axis.tick(i)));
  }
  return out + insideBars(data, axis) + dots(data, axis) + "</svg>";
}

std::string eventTable(const ReportData& data) {
  std::multimap<Duration, std::string> rows;  // keeps the order of equal times
  const auto add = [&](Duration at, std::string_view kind, const std::string& text) {
    rows.emplace(at, fmt::format("<tr><td>{}</td><td class=\"{}\">{}</td><td>{}</td></tr>\n",
                                 data.clockTime(at), kind, kind, escaped(text)));
  };
  for (const Moment& m : data.moments) add(m.at, m.kind, m.text);
  for (const Request& r : data.requests)
    add(r.at, failed(r) ? "failed" : "request", r.method + " " + r.path + " → " + r.outcome);
  for (const Crossing& c : data.crossings) {
    add(c.at, c.entry ? "entry" : "exit", c.campaign + " (" + c.monitor + ")");
  }
  for (const Notification& n : data.notifications)
    add(n.at, "notification", n.request.content.title + ": " + n.request.content.body + " [" + n.state + "]");
  std::string out = "<table><thead><tr><th>time</th><th>what</th><th></th></tr></thead><tbody>\n";
  for (const auto& [at, row] : rows) out += row;
  return out + "</tbody></table>";
}

}  // namespace orlan::report
