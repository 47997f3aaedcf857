#pragma once

#include <optional>
#include <string>

#include "orlan/base/Time.hpp"
#include "orlan/platform/Application.hpp"
#include "orlan/platform/Location.hpp"

namespace orlan {

/// When the campaigns are fetched anew without anybody asking.
namespace refreshPolicy {

inline constexpr double backgroundRefreshDistance = 150.0;  // metres
inline constexpr Duration backgroundRefreshMinInterval = std::chrono::seconds(120);
inline constexpr double backgroundRefreshMaxAccuracy = 250.0;  // metres

/// The latest fetch; both absent before the first.
struct LastFetch {
  std::optional<TimePoint> at;
  std::optional<Location> location;
};

/// Whether the application is not active, and `fix` good enough, far enough from the last fetch and late
/// enough for one of its own. A distance that cannot be measured counts as far, an accuracy that is no number
/// as bad.
[[nodiscard]] bool wantsBackgroundRefresh(const Location& fix, ApplicationState state, TimePoint now,
                                          const LastFetch& last);

/// How far `fix` is from the last fetch, in whole metres towards zero: "187", or "∞" when there is no
/// measure.
[[nodiscard]] std::string wholeMetres(const Location& fix, const LastFetch& last);

/// Time between two fetches by the timer, chosen at the moment at which it is set.
[[nodiscard]] Duration timerInterval(ApplicationState state);

}  // namespace refreshPolicy
}  // namespace orlan
