#include "tools/orlan/simulate/Timeline.hpp"

#include <algorithm>

namespace orlan::simulate {
namespace {

/// How many moments a step has up to the scenario's end.
std::size_t momentsOf(const Step& step, Duration until) {
  const auto* walk = std::get_if<Track>(&step.action);
  if (walk == nullptr) return 1;
  return std::min(walk->size(), static_cast<std::size_t>((until - step.at) / walk->interval) + 1);
}

}  // namespace

Timeline::Timeline(const Scenario& scenario) : scenario_(scenario) {
  for (std::size_t index = 0; index < scenario.steps.size(); ++index) {
    size_ += momentsOf(scenario.steps[index], scenario.until);
    await(index, 0);
  }
}

std::optional<Moment> Timeline::next() {
  if (due_.empty()) return std::nullopt;
  const Moment moment = due_.top();
  due_.pop();
  await(moment.step, moment.fix + 1);
  return moment;
}

void Timeline::await(std::size_t index, std::size_t fix) {
  const Step& step = scenario_.steps[index];
  if (fix >= momentsOf(step, scenario_.until)) return;
  const auto* walk = std::get_if<Track>(&step.action);
  due_.push({step.at + (walk == nullptr ? Duration::zero() : walk->time(fix)), index, fix});
}

std::optional<Duration> walkBeyondTheEnd(const Scenario& scenario) {
  std::optional<Duration> latest;
  for (const Step& step : scenario.steps) {
    const auto* walk = std::get_if<Track>(&step.action);
    if (walk == nullptr) continue;
    const Duration end = step.at + walk->time(walk->size() - 1);
    if (end > scenario.until) latest = std::max(end, latest.value_or(end));
  }
  return latest;
}

}  // namespace orlan::simulate
