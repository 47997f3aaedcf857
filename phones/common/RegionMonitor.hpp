#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "orlan/platform/Circle.hpp"
#include "orlan/platform/Location.hpp"
#include "orlan/platform/Place.hpp"
#include "phones/common/PhoneObserver.hpp"

namespace orlan::phone {

/// Who is inside which circle: the operating system's region monitor, as a plain value that calls nobody.
///
/// Inside means at most the radius from the centre. Outside again means farther from the circle's edge than
/// the fix may be wrong: more than `horizontalAccuracy` metres beyond it, at most `maxExitMargin`; so a fix
/// that wavers on the edge raises nothing. Every region starts outside, so that one that starts with the
/// phone inside is entered at the next fix. Fixes that are not valid (negative accuracy, no measurable
/// coordinate) change nothing.
class RegionMonitor {
 public:
  static constexpr std::size_t maxRegions = 20;
  static constexpr double maxExitMargin = 100.0;  // metres

  struct Crossing {
    RegionAction action;  // enter or exit
    CircularRegion region;
  };

  /// False when it is ignored: the circle is not finite, or it would be one too many. A known identifier is
  /// replaced in its place and starts outside again.
  bool start(const CircularRegion& region);

  /// The region that is no longer monitored; nothing when it was not.
  std::optional<CircularRegion> stop(std::string_view identifier);

  [[nodiscard]] const CircularRegion* find(std::string_view identifier) const;
  [[nodiscard]] std::vector<CircularRegion> regions() const;  // in the order of starting

  /// The phone is at `fix`: what was crossed, in the order of the regions, each crossing once. A crossing
  /// whose kind the region does not want to hear of is noted but not returned.
  [[nodiscard]] std::vector<Crossing> update(const Location& fix);

  /// From elsewhere it is known that the phone is inside or outside.
  void setInside(std::string_view identifier, bool inside);

 private:
  struct Watched {
    CircularRegion region;
    Place centre;
    bool inside = false;
  };
  [[nodiscard]] Watched* watched(std::string_view identifier);

  std::vector<Watched> watched_;
};

}  // namespace orlan::phone
