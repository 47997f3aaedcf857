#include "orlan/geofence/HopLog.hpp"

#include <fmt/format.h>

#include "orlan/base/text.hpp"

namespace orlan {

std::optional<std::string> HopLog::logHop(const Location& fix) {
  if (!lastLoggedLoc_) {
    lastLoggedLoc_ = fix;
    return std::nullopt;
  }
  if (distance(fix.coordinate, lastLoggedLoc_->coordinate) < hopDistance) return std::nullopt;
  ++hopCounter_;
  lastLoggedLoc_ = fix;
  if (hopCounter_ % hopsPerLog != 0) return std::nullopt;
  return fmt::format("📍 hop #{} → {},{}", hopCounter_, text::fixed(fix.coordinate.latitude, 6),
                     text::fixed(fix.coordinate.longitude, 6));
}

}  // namespace orlan
