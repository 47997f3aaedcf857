#include "phones/linux/Track.hpp"
#include "tools/orlan/simulate/Walk.hpp"
#include "tools/orlan/simulate/readers.hpp"

namespace orlan::simulate {
namespace {

constexpr double mostFixes = 10e6;  // of one walk: beyond, speed or interval are slips

Walk readPoints(const Item& points) {
  Walk way;
  for (const Item& point : points.elements()) {
    const auto pair = point.elements();
    if (pair.size() != 2) {
      point.expected("[latitude, longitude]");
      break;
    }
    way.push_back({{{pair[0].number(), pair[1].number()}}});
  }
  if (way.empty()) points.mistaken("expected at least one point");
  return way;
}

Walk readTrackFile(const Item& file, const Files& files) {
  Walk way;
  const std::string path = file.string();
  if (path.empty()) {
    file.expected("the path of a GPX or NMEA file");
    return way;
  }
  const auto track = linuxphone::readTrack(files.resolved(path));
  if (!track) {
    file.mistaken(track.error().description);
    return way;
  }
  const TimePoint begin = track->fixes.front().timestamp;
  for (const Location& fix : track->fixes) {
    way.push_back({{fix.coordinate, fix.horizontalAccuracy}, seconds(fix.timestamp - begin)});
  }
  return way;
}

}  // namespace

Track readTrack(const Members& members, const Files& files) {
  Track track{std::chrono::seconds(1), {}};
  const Item points = members["points"];
  const Item file = members["file"];
  members.excludes("points", {"file"});
  if (!points.isThere() && !file.isThere()) points.expected("the points of a walk, or a \"file\"");
  Walk& walk = track.way;
  walk = points.isThere() ? readPoints(points) : readTrackFile(file, files);
  if (const Item interval = members["interval"]; interval.isThere()) {
    track.interval = fromSeconds(interval.positive());
    if (track.interval <= Duration::zero()) interval.expected("a microsecond or more");
  }
  if (const Item accuracy = members["accuracy"]; accuracy.isThere()) {
    const double metres = accuracy.number();
    for (Waypoint& point : walk) point.fix.accuracy = metres;
  }
  if (const Item speed = members["speed"]; speed.isThere()) {
    walk = atSpeed(std::move(walk), speed.positive());
  } else if (points.isThere()) {
    speed.expected("a number above 0, as points have no times of their own");
  }
  if (track.interval <= Duration::zero()) return track;
  if (track.countFixes() > mostFixes) {
    members.owner().mistaken("the walk has more than ten million fixes");
  }
  return track;
}

}  // namespace orlan::simulate
