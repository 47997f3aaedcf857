#include "tools/orlan/simulate/Timeline.hpp"

#include <algorithm>

namespace orlan::simulate {

std::vector<Moment> timeline(const Scenario& scenario) {
  std::vector<Moment> moments;
  for (std::size_t index = 0; index < scenario.steps.size(); ++index) {
    const Step& step = scenario.steps[index];
    const auto* walk = std::get_if<Track>(&step.action);
    const std::size_t fixes = walk == nullptr ? 1 : walk->fixes.size();
    for (std::size_t fix = 0; fix < fixes; ++fix) {
      const Duration at =
          step.at + (walk == nullptr ? Duration::zero() : walk->interval * static_cast<std::int64_t>(fix));
      if (at <= scenario.until) moments.push_back({at, index, fix});
    }
  }
  std::stable_sort(moments.begin(), moments.end(),
                   [](const Moment& a, const Moment& b) { return a.at < b.at; });
  return moments;
}

std::optional<Duration> walkBeyondTheEnd(const Scenario& scenario) {
  std::optional<Duration> latest;
  for (const Step& step : scenario.steps) {
    const auto* walk = std::get_if<Track>(&step.action);
    if (walk == nullptr || walk->fixes.empty()) continue;
    const Duration end = step.at + walk->interval * static_cast<std::int64_t>(walk->fixes.size() - 1);
    if (end > scenario.until) latest = std::max(end, latest.value_or(end));
  }
  return latest;
}

}  // namespace orlan::simulate
