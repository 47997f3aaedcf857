#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "orlan/base/Time.hpp"
#include "orlan/base/json.hpp"
#include "orlan/platform/Application.hpp"
#include "orlan/platform/LocationManager.hpp"
#include "orlan/platform/NotificationCenter.hpp"
#include "phones/simulated/SimulatedFiles.hpp"

namespace orlan::simulate {

/// A position as a scenario gives it; when it is taken follows from the step.
struct Fix {
  Coordinate coordinate;  // degrees
  double accuracy = 5.0;  // metres
};

class Caller;

/// What a step does, with its arguments.
namespace step {

/// A call of the library by the host, its arguments bound.
struct Call {
  std::function<void(Caller&)> make;
};
struct ClearCooldown {
  bool background = false;  // of which monitor
};

/// Fixes that arrive as one batch.
struct Fixes {
  std::vector<Fix> fixes;
};
/// A walk, already cut into single fixes at even intervals.
struct Track {
  Duration interval{};
  std::vector<Fix> fixes;
};
struct MoveApplication {
  ApplicationState to;
};
struct RaiseSignal {
  ApplicationSignal signal;
};
struct SetLocationAuthorization {
  LocationAuthorization to;
};
struct SetNotificationAuthorization {
  NotificationAuthorization to;
};
/// The operating system reports it, whether or not the region is monitored.
struct CrossRegion {
  std::string identifier;
  bool entering = true;
};
struct Relaunch {
  ApplicationState application = ApplicationState::active;
};
/// The one with that number among those that the library scheduled so far.
struct Delivered {
  std::size_t number = 0;
};
/// A notification comes up in front, or the person taps one.
struct Notify {
  std::variant<NotificationRequest, Delivered> what;
  std::optional<std::string> tappedAction;  // none: it comes up
};
struct SetClock {
  TimePoint to;
};
struct ChangeStore {
  std::string key;
  std::optional<json::Value> value;  // none removes
};
struct ChangeFile {
  std::string name;
  std::optional<std::string> text;  // none removes
};
struct ReadFile {
  std::string name;
};
struct FailLocation {
  std::string description;
};
struct FailStorage {
  sim::StorageFault fault = sim::StorageFault::none;
};

}  // namespace step

using Action =
    std::variant<step::Call, step::ClearCooldown, step::Fixes, step::Track, step::MoveApplication,
                 step::RaiseSignal, step::SetLocationAuthorization, step::SetNotificationAuthorization,
                 step::CrossRegion, step::Relaunch, step::Notify, step::SetClock, step::ChangeStore,
                 step::ChangeFile, step::ReadFile, step::FailLocation, step::FailStorage>;

struct Step {
  Duration at{};     // since second 0
  std::string call;  // the step's name, as results repeat it
  Action action;
};

}  // namespace orlan::simulate
