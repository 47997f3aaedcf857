#include "tools/orlan/report/MapView.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <set>
#include <utility>

#include "tools/orlan/report/Html.hpp"

namespace orlan::report {

namespace {

constexpr double width = 960.0;
constexpr double height = 640.0;
constexpr double margin = 0.08;           // of the larger extent, around what is shown
constexpr double smallestExtent = 0.002;  // degrees: a phone that stood still is still shown with its street

bool isFinite(Coordinate c) {
  return std::isfinite(c.latitude) && std::isfinite(c.longitude);
}

struct Bounds {
  double south = 91.0, north = -91.0, west = 361.0, east = -361.0;

  void take(Coordinate c) {
    if (!isFinite(c)) return;
    south = std::min(south, c.latitude);
    north = std::max(north, c.latitude);
    west = std::min(west, c.longitude);
    east = std::max(east, c.longitude);
  }
  [[nodiscard]] bool empty() const { return south > north; }
};

Bounds shownPart(const ReportData& data) {
  Bounds bounds;
  for (const Fix& fix : data.fixes) bounds.take(fix.coordinate);
  if (bounds.empty()) {
    for (const Area& area : data.areas) {
      for (const Coordinate vertex : area.vertices) bounds.take(vertex);
    }
  }
  return bounds;
}

/// Degrees to picture points: longitude shortened by the cosine of the middle latitude, one scale for both
/// axes.
class Projection {
 public:
  explicit Projection(const Bounds& bounds) {
    middle_ = {(bounds.south + bounds.north) / 2, (bounds.west + bounds.east) / 2};
    shortening_ = std::max(0.05, std::cos(middle_.latitude * std::numbers::pi / 180.0));
    const double high = std::max(bounds.north - bounds.south, smallestExtent) * (1 + 2 * margin);
    const double wide =
        std::max((bounds.east - bounds.west) * shortening_, smallestExtent) * (1 + 2 * margin);
    scale_ = std::min(width / wide, height / high);
  }

  [[nodiscard]] double x(Coordinate c) const {
    return width / 2 + (c.longitude - middle_.longitude) * shortening_ * scale_;
  }
  [[nodiscard]] double y(Coordinate c) const { return height / 2 - (c.latitude - middle_.latitude) * scale_; }
  [[nodiscard]] std::string point(Coordinate c) const { return number(x(c)) + "," + number(y(c)); }
  [[nodiscard]] double pixels(double metres) const { return metres / metresPerDegree * scale_; }

 private:
  static constexpr double metresPerDegree = 111320.0;
  Coordinate middle_;
  double shortening_ = 1.0;
  double scale_ = 1.0;
};

std::string points(const std::vector<Coordinate>& coordinates, const Projection& projection) {
  std::string out;
  for (const Coordinate c : coordinates) {
    if (isFinite(c)) out += projection.point(c) + " ";
  }
  return out;
}

Coordinate middleOf(const std::vector<Coordinate>& vertices) {
  Bounds bounds;
  for (const Coordinate vertex : vertices) bounds.take(vertex);
  return {(bounds.south + bounds.north) / 2, (bounds.west + bounds.east) / 2};
}

std::string areaShapes(const ReportData& data, const Projection& projection) {
  std::set<std::pair<std::int64_t, std::int64_t>> crossed;
  for (const Crossing& crossing : data.crossings) crossed.emplace(crossing.campaignId, crossing.locationId);
  std::string out;
  for (const Area& area : data.areas) {
    const bool touched = crossed.contains({area.campaignId, area.locationId});
    out += fmt::format(R"(<polygon class="area{}" points="{}"><title>{}</title></polygon>)",
                       touched ? " touched" : "", points(area.vertices, projection), escaped(area.name));
    if (!touched) continue;
    const Coordinate middle = middleOf(area.vertices);
    out += fmt::format(R"(<text class="name" x="{}" y="{}">{}</text>)",
                       number(std::clamp(projection.x(middle), 80.0, width - 80.0)),
                       number(std::clamp(projection.y(middle), 18.0, height - 10.0)), escaped(area.name));
  }
  return out;
}

std::string circleShapes(const ReportData& data, const Projection& projection) {
  std::string out;
  for (const Circle& circle : data.circles) {
    if (!isFinite(circle.centre)) continue;
    out +=
        fmt::format(R"(<circle class="region" cx="{}" cy="{}" r="{}"/>)", number(projection.x(circle.centre)),
                    number(projection.y(circle.centre)), number(projection.pixels(circle.radius)));
  }
  return out;
}

std::string trackLine(const ReportData& data, const Projection& projection) {
  std::vector<Coordinate> track;
  track.reserve(data.fixes.size());
  for (const Fix& fix : data.fixes) track.push_back(fix.coordinate);
  if (track.empty()) return {};
  return fmt::format(R"(<polyline class="track" points="{}"/>)", points(track, projection));
}

std::string marks(const ReportData& data, const Projection& projection) {
  std::string out;
  for (const Crossing& crossing : data.crossings) {
    if (!crossing.where || !isFinite(*crossing.where)) continue;
    out += fmt::format(
        R"(<circle class="mark {} {}" cx="{}" cy="{}" r="{}"><title>{} {} {} ({})</title></circle>)",
        crossing.entry ? "entry" : "exit", escaped(crossing.monitor), number(projection.x(*crossing.where)),
        number(projection.y(*crossing.where)), crossing.entry ? 9 : 6, data.clockTime(crossing.at),
        crossing.entry ? "entered" : "left", escaped(crossing.campaign), escaped(crossing.monitor));
  }
  return out;
}

/// The numbers of the notifications, those that came up at one place side by side.
std::string pins(const ReportData& data, const Projection& projection) {
  constexpr double near = 14.0;
  struct Pin {
    double x, y;
    std::string numbers, titles;
  };
  std::vector<Pin> found;
  for (const Notification& notification : data.notifications) {
    if (!notification.where || !isFinite(*notification.where)) continue;
    const double x = projection.x(*notification.where);
    const double y = projection.y(*notification.where);
    auto pin = std::ranges::find_if(
        found, [&](const Pin& other) { return std::hypot(other.x - x, other.y - y) < near; });
    if (pin == found.end()) pin = found.insert(found.end(), {x, y, {}, {}});
    pin->numbers += fmt::format("{}{}", pin->numbers.empty() ? "" : " · ", notification.number);
    pin->titles += data.clockTime(notification.at) + " " + escaped(notification.request.content.title) + "\n";
  }
  std::string out;
  for (const Pin& pin : found) {
    out += fmt::format(R"(<text class="pin" x="{}" y="{}">{}<title>{}</title></text>)", number(pin.x),
                       number(pin.y - 12), pin.numbers, pin.titles);
  }
  return out;
}

}  // namespace

std::string mapView(const ReportData& data) {
  const Bounds bounds = shownPart(data);
  if (bounds.empty()) return R"(<p class="nothing">No position and no campaign area to draw.</p>)";
  const Projection projection(bounds);
  return fmt::format(R"(<svg class="map" viewBox="0 0 {} {}" role="img" aria-label="Map">{}{}{}{}{}</svg>)",
                     width, height, areaShapes(data, projection), circleShapes(data, projection),
                     trackLine(data, projection), marks(data, projection), pins(data, projection));
}

}  // namespace orlan::report
