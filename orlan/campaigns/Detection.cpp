#include "orlan/campaigns/Detection.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "orlan/base/text.hpp"
#include "orlan/logging/Breadcrumbs.hpp"

namespace orlan {

namespace {

constexpr double bufferAccuracy = 20.0;  // metres; only a fix less accurate than this looks for near vertices

/// What is said about a polygon but for its name: the same for all that fare alike with a fix, so made once.
struct Outcome {
  GeofenceResult result;
  Breadcrumbs::Lines lines;
};

/// The historical vote repeats the ray-casting vote, so that one alone decides.
Outcome outcome(const Location& fix, bool rayCasting, bool bufferCheck, const Breadcrumbs& breadcrumbs) {
  const auto word = [](bool vote) { return vote ? "true" : "false"; };
  const double accuracy = fix.horizontalAccuracy;
  const double confidence = std::max(1.0 + accuracy / -100.0, 0.1);
  const std::string_view method = rayCasting ? "polygon_high_confidence" : "outside_polygon";
  return {{0, 0, rayCasting, confidence, method, accuracy},
          breadcrumbs.lines({fmt::format("  - Ray casting: {}", word(rayCasting)),
                             fmt::format("  - Buffer check: {}", word(bufferCheck)),
                             fmt::format("  - Historical: {}", word(rayCasting)),
                             fmt::format("  - Location: {}, {}", text::fromDouble(fix.coordinate.latitude),
                                         text::fromDouble(fix.coordinate.longitude)),
                             fmt::format("  - Accuracy: {}m", text::fromDouble(accuracy)),
                             fmt::format("  - Consensus: inside={}, confidence={}, method={}",
                                         word(rayCasting), text::fromDouble(confidence), method)})};
}

/// Walks an ascending list alongside the polygons.
class Among {
 public:
  explicit Among(const std::vector<PolygonSet::Index>& list) : next_(list.begin()), end_(list.end()) {}
  bool has(std::size_t index) {
    const bool found = next_ != end_ && *next_ == index;
    if (found) ++next_;
    return found;
  }

 private:
  std::vector<PolygonSet::Index>::const_iterator next_, end_;
};

}  // namespace

std::vector<GeofenceResult> detectGeofences(const Location& fix, const PolygonSet& polygons, Logger& logger) {
  std::vector<GeofenceResult> results;
  if (polygons.size() == 0) return results;

  const auto containing = polygons.containing(fix.coordinate);
  std::vector<PolygonSet::Index> close;
  if (fix.horizontalAccuracy > bufferAccuracy) {
    close = polygons.withVertexWithin(fix.coordinate, fix.horizontalAccuracy * 0.5);
  }

  Breadcrumbs breadcrumbs(logger);
  const Outcome inside = containing.empty() ? Outcome() : outcome(fix, true, true, breadcrumbs);
  const Outcome near = close.empty() ? Outcome() : outcome(fix, false, true, breadcrumbs);
  const Outcome outside = outcome(fix, false, false, breadcrumbs);
  Among insides(containing);
  Among closeOnes(close);
  results.reserve(polygons.size());
  for (std::size_t i = 0; i < polygons.size(); ++i) {
    const Outcome& other = closeOnes.has(i) ? near : outside;
    const Outcome& found = insides.has(i) ? inside : other;
    const auto label = polygons.label(i);
    breadcrumbs.add(label.detectionTitle, found.lines);
    auto& result = results.emplace_back(found.result);
    result.campaignId = label.campaignId;
    result.locationId = label.locationId;
  }
  breadcrumbs.write();
  return results;
}

}  // namespace orlan
