#pragma once

#include <optional>
#include <string>

#include "orlan/base/Time.hpp"
#include "orlan/platform/Application.hpp"

/// When the campaigns are fetched anew without anybody asking, decided from values alone.
namespace orlan::refreshPolicy {

inline constexpr double backgroundRefreshDistance = 150.0;  // metres
inline constexpr Duration backgroundRefreshMinInterval = std::chrono::seconds(120);
inline constexpr double backgroundRefreshMaxAccuracy = 250.0;  // metres

/// A fix as the decision sees it.
struct FixSeen {
  ApplicationState state = ApplicationState::background;
  double accuracy = 0.0;  // metres; negative: not valid
  std::optional<Duration> sinceLastFetch;
  std::optional<double> metresFromLastFetch;
};

/// Whether the application is not active and the fix good enough, late enough and far enough for a fetch of
/// its own. Without a last fetch it is late and far. A distance that is no number counts as far, such an
/// accuracy as bad.
[[nodiscard]] bool wantsBackgroundRefresh(const FixSeen& fix);

/// Whole metres towards zero: "187"; "∞" for a distance that is absent or no number.
[[nodiscard]] std::string wholeMetres(std::optional<double> metres);

/// Time between two fetches by the timer, chosen when it is set.
[[nodiscard]] Duration timerInterval(ApplicationState state);

}  // namespace orlan::refreshPolicy
