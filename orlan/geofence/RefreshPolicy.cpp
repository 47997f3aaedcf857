#include "orlan/geofence/RefreshPolicy.hpp"

#include <cmath>
#include <limits>

#include "orlan/base/text.hpp"

namespace orlan::refreshPolicy {
namespace {

double metresMoved(const Location& fix, const LastFetch& last) {
  if (!last.location) return std::numeric_limits<double>::infinity();
  return distance(fix.coordinate, last.location->coordinate);
}

}  // namespace

bool wantsBackgroundRefresh(const Location& fix, ApplicationState state, TimePoint now,
                            const LastFetch& last) {
  if (state == ApplicationState::active) return false;
  const double accuracy = fix.horizontalAccuracy;
  if (!(accuracy >= 0.0 && accuracy <= backgroundRefreshMaxAccuracy)) return false;
  if (last.at && now - *last.at < backgroundRefreshMinInterval) return false;
  return !(metresMoved(fix, last) < backgroundRefreshDistance);
}

std::string wholeMetres(const Location& fix, const LastFetch& last) {
  const double metres = metresMoved(fix, last);
  if (!std::isfinite(metres)) return "∞";
  return text::fixed(std::trunc(metres), 0);
}

Duration timerInterval(ApplicationState state) {
  return std::chrono::seconds(state == ApplicationState::active ? 300 : 1800);
}

}  // namespace orlan::refreshPolicy
