#include "orlan/campaigns/Detection.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "orlan/base/text.hpp"
#include "orlan/logging/Logger.hpp"

namespace orlan {

namespace {

constexpr double bufferAccuracy = 20.0;  // metres; only a fix less accurate than this looks for near vertices
constexpr std::size_t linesPerPolygon = 7;
constexpr std::size_t polygonsPerHandOver = 64;

struct Decision {
  bool isInside;
  std::string_view method;
  double confidence;
  std::string consensus;  // the line that says so
};

Decision decide(bool isInside, double accuracy) {
  Decision decision{isInside,
                    isInside ? "polygon_high_confidence" : "outside_polygon",
                    std::max(1.0 + accuracy / -100.0, 0.1),
                    {}};
  decision.consensus = std::string("  - Consensus: inside=") + (isInside ? "true" : "false") +
                       ", confidence=" + text::fromDouble(decision.confidence) +
                       ", method=" + std::string(decision.method);
  return decision;
}

/// The lines about one fix. Between polygons only the title and the votes differ, so the texts are made once
/// and each polygon's block is seven views of them.
class Breadcrumbs {
 public:
  Breadcrumbs(const Location& fix, Logger& logger)
      : logger_(logger),
        location_("  - Location: " + text::fromDouble(fix.coordinate.latitude) + ", " +
                  text::fromDouble(fix.coordinate.longitude)),
        accuracy_("  - Accuracy: " + text::fromDouble(fix.horizontalAccuracy) + "m") {}

  void add(std::string_view title, bool rayCasting, bool bufferCheck, std::string_view consensus) {
    for (const std::string_view line :
         {title, rayCasting ? rayCastingTrue : rayCastingFalse, bufferCheck ? bufferTrue : bufferFalse,
          rayCasting ? historicalTrue : historicalFalse, std::string_view(location_),
          std::string_view(accuracy_), consensus}) {
      lines_[count_++] = line;
    }
    if (count_ == lines_.size()) handOver();
  }

  /// Gives the logger what has gathered.
  void handOver() {
    logger_.breadcrumbs({lines_.data(), count_});
    count_ = 0;
  }

 private:
  static constexpr std::string_view rayCastingTrue = "  - Ray casting: true";
  static constexpr std::string_view rayCastingFalse = "  - Ray casting: false";
  static constexpr std::string_view bufferTrue = "  - Buffer check: true";
  static constexpr std::string_view bufferFalse = "  - Buffer check: false";
  static constexpr std::string_view historicalTrue = "  - Historical: true";
  static constexpr std::string_view historicalFalse = "  - Historical: false";

  Logger& logger_;
  std::string location_;
  std::string accuracy_;
  std::array<std::string_view, linesPerPolygon * polygonsPerHandOver> lines_;
  std::size_t count_ = 0;
};

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

  const double accuracy = fix.horizontalAccuracy;
  const auto containing = polygons.containing(fix.coordinate);
  std::vector<PolygonSet::Index> close;
  if (accuracy > bufferAccuracy) close = polygons.withVertexWithin(fix.coordinate, accuracy * 0.5);

  const Decision inside = decide(true, accuracy);
  const Decision outside = decide(false, accuracy);
  Breadcrumbs breadcrumbs(fix, logger);
  Among insides(containing);
  Among closeOnes(close);
  results.reserve(polygons.size());
  for (std::size_t i = 0; i < polygons.size(); ++i) {
    // The historical vote repeats the ray-casting vote, so that one alone decides.
    const bool rayCasting = insides.has(i);
    const bool bufferCheck = closeOnes.has(i) || rayCasting;
    const Decision& decision = rayCasting ? inside : outside;
    const auto label = polygons.label(i);
    breadcrumbs.add(label.detectionTitle, rayCasting, bufferCheck, decision.consensus);
    results.push_back({label.campaignId, label.locationId, decision.isInside, decision.confidence,
                       decision.method, accuracy});
  }
  breadcrumbs.handOver();
  return results;
}

}  // namespace orlan
