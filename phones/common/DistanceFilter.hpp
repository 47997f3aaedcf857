#pragma once

#include <optional>

#include "orlan/platform/Place.hpp"

namespace orlan::phone {

/// Lets a place pass that is far enough from the last one that passed. The first passes.
class DistanceFilter {
 public:
  /// The next one is the first.
  void restart() { last_.reset(); }

  /// Whether `place` is at least `metres` from the last one; a limit that is not above zero lets everything
  /// pass. A distance that cannot be measured does not pass; a place that has no distances lets the next
  /// one pass, so that nobody waits for ever.
  [[nodiscard]] bool passes(const Place& place, double metres) {
    const bool pass = !last_ || !(metres > 0.0) || compareDistance(*last_, place, metres) >= 0;
    if (pass) last_ = place.measurable() ? std::optional(place) : std::nullopt;
    return pass;
  }

 private:
  std::optional<Place> last_;
};

}  // namespace orlan::phone
