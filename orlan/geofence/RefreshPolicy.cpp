#include "orlan/geofence/RefreshPolicy.hpp"

#include <cmath>

#include "orlan/base/text.hpp"

namespace orlan::refreshPolicy {

bool wantsBackgroundRefresh(const FixSeen& fix) {
  if (fix.state == ApplicationState::active) return false;
  if (!(fix.accuracy >= 0.0 && fix.accuracy <= backgroundRefreshMaxAccuracy)) return false;
  if (fix.sinceLastFetch && *fix.sinceLastFetch < backgroundRefreshMinInterval) return false;
  return !(fix.metresFromLastFetch && *fix.metresFromLastFetch < backgroundRefreshDistance);
}

std::string wholeMetres(std::optional<double> metres) {
  if (!metres || !std::isfinite(*metres)) return "∞";
  return text::fixed(std::trunc(*metres), 0);
}

Duration timerInterval(ApplicationState state) {
  return std::chrono::seconds(state == ApplicationState::active ? 300 : 1800);
}

}  // namespace orlan::refreshPolicy
