#include <algorithm>
#include <cmath>

#include "orlan/base/text.hpp"
#include "phones/linux/IsoTime.hpp"
#include "phones/linux/Track.hpp"
#include "phones/linux/XmlText.hpp"

namespace orlan::linuxphone {
namespace {

constexpr Duration assumedStep = std::chrono::seconds(1);

struct Point {
  Location fix;
  std::optional<TimePoint> time;
};

std::vector<pugi::xml_node> childrenNamed(const std::vector<pugi::xml_node>& parents, std::string_view name) {
  std::vector<pugi::xml_node> found;
  for (const auto& parent : parents) {
    for (const auto& child : parent.children()) {
      if (xml::localName(child) == name) found.push_back(child);
    }
  }
  return found;
}

pugi::xml_node childNamed(const pugi::xml_node& parent, std::string_view name) {
  return parent.find_child([&](const pugi::xml_node& node) { return xml::localName(node) == name; });
}

std::optional<double> numberIn(const pugi::xml_node& node) {
  const auto number = text::toDouble(text::trimmed(xml::text(node)));
  return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<double> degrees(const pugi::xml_node& point, const char* name, double limit) {
  const auto number = text::toDouble(text::trimmed(point.attribute(name).value()));
  return number && std::abs(*number) <= limit ? number : std::nullopt;
}

// What is unreadable here is as good as missing: the coordinate is still worth having.
double accuracy(const pugi::xml_node& point) {
  const auto stated = childNamed(point, "extensions").find_node([](const pugi::xml_node& node) {
    const auto name = xml::localName(node);
    return name == "hAcc" || name == "accuracy";
  });
  if (const auto metres = numberIn(stated)) return *metres;
  if (const auto dop = numberIn(childNamed(point, "hdop")); dop && *dop > 0) return *dop * metresPerDop;
  return assumedAccuracy;
}

Result<Point, std::string> readPoint(const pugi::xml_node& node) {
  const auto latitude = degrees(node, "lat", 90.0);
  if (!latitude) return Unexpected(std::string("a point without a valid latitude"));
  const auto longitude = degrees(node, "lon", 180.0);
  if (!longitude) return Unexpected(std::string("a point without a valid longitude"));
  Point point{{{*latitude, *longitude}, accuracy(node), {}}, std::nullopt};

  const std::string time = xml::text(childNamed(node, "time"));
  const auto trimmed = text::trimmed(time);
  if (trimmed.empty()) return point;
  point.time = parseIsoTime(trimmed);
  if (!point.time) return Unexpected("not a time: " + std::string(trimmed));
  return point;
}

std::vector<pugi::xml_node> pointsOf(const pugi::xml_node& gpx) {
  auto points = childrenNamed(childrenNamed(childrenNamed({gpx}, "trk"), "trkseg"), "trkpt");
  if (points.empty()) points = childrenNamed(childrenNamed({gpx}, "rte"), "rtept");
  return points;
}

/// `points` has one at least.
void fillTimes(std::vector<Point>& points) {
  const auto isTimed = [](const Point& point) { return point.time.has_value(); };
  auto from = std::find_if(points.begin(), points.end(), isTimed);
  if (from == points.end()) {
    from = points.begin();
    from->time = TimePoint();
  }
  for (auto it = from; it != points.begin(); --it) (it - 1)->time = *it->time - assumedStep;
  while (from + 1 != points.end()) {
    const auto next = std::find_if(from + 1, points.end(), isTimed);
    const bool isLast = next == points.end();
    const Duration step = isLast ? assumedStep : (*next->time - *from->time) / (next - from);
    for (auto it = from + 1; it != next; ++it) {
      it->time = isLast ? *(it - 1)->time + step : *next->time - step * (next - it);
    }
    from = isLast ? next - 1 : next;
  }
}

}  // namespace

Result<Track, std::string> parseGpx(std::string_view bytes) {
  pugi::xml_document document;
  if (const auto loaded = xml::load(document, bytes); !loaded) return Unexpected(loaded.error());
  const auto gpx = document.document_element();
  if (xml::localName(gpx) != "gpx") return Unexpected(xml::place(bytes, gpx) + "not a GPX file");
  const auto nodes = pointsOf(gpx);
  if (nodes.empty()) return Unexpected(std::string("there is no track point in it"));

  std::vector<Point> points;
  points.reserve(nodes.size());
  for (const auto& node : nodes) {
    auto point = readPoint(node);
    if (!point) return Unexpected(xml::place(bytes, node) + point.error());
    points.push_back(*point);
  }
  fillTimes(points);
  Track track;
  for (Point& point : points) {
    point.fix.timestamp = *point.time;
    track.fixes.push_back(point.fix);
  }
  std::stable_sort(track.fixes.begin(), track.fixes.end(),
                   [](const Location& a, const Location& b) { return a.timestamp < b.timestamp; });
  return track;
}

}  // namespace orlan::linuxphone
