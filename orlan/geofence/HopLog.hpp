#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "orlan/platform/Location.hpp"

namespace orlan {

/// Counts a walk in hops: a hop is complete when a fix is at least 10 m from where the last one ended, so
/// that small movements add up and going back and forth does not.
class HopLog {
 public:
  static constexpr double hopDistance = 10.0;  // metres
  static constexpr std::int64_t hopsPerLog = 100;

  /// Takes the next fix; every hundredth hop gives a line for the log. The first fix only sets the start. A
  /// distance that cannot be measured counts as a hop, so that a fix without a place does not stay the start.
  [[nodiscard]] std::optional<std::string> logHop(const Location& fix);

  /// The fix with which the last hop ended.
  [[nodiscard]] const std::optional<Location>& lastLoggedLoc() const { return lastLoggedLoc_; }

 private:
  std::optional<Location> lastLoggedLoc_;
  std::int64_t hopCounter_ = 0;
};

}  // namespace orlan
