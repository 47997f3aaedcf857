#pragma once

#include <optional>
#include <string>

#include "orlan/platform/Coordinate.hpp"

namespace orlan {

/// What a monitor adds to the common reaction to one crossing, at the moments that the reaction sets. Main
/// thread.
class ReactionHooks {
 public:
  virtual ~ReactionHooks() = default;

  /// Ends the entry or exit line.
  [[nodiscard]] virtual std::string lineSuffix() const { return {}; }

  /// Right after that line, before anybody hears of the crossing.
  virtual void afterLine() {}

  virtual void tellDelegate() = 0;

  /// Once the notifications are posted and counted.
  virtual void beforeReports() {}

  /// Where it happened, as far as known; asked last.
  [[nodiscard]] virtual std::optional<Coordinate> position() const = 0;
};

}  // namespace orlan
