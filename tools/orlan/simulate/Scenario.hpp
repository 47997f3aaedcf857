#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "orlan/backend/Config.hpp"
#include "orlan/base/Time.hpp"
#include "phones/simulated/SimulatedPhone.hpp"
#include "tools/orlan/simulate/Steps.hpp"

namespace orlan::simulate {

/// What one address of the simulated backend answers.
struct Route {
  std::string method;
  std::string path;  // the URL without scheme and host
  std::vector<sim::HttpAnswer> answers;
};

/// A phone, a backend and a day in the life of the device, checked and complete: playing it needs no file,
/// and the one mistake it can still find is a notification that nobody scheduled.
struct Scenario {
  std::string name;
  sim::WorldSettings world;
  sim::PhoneSettings phone;
  std::vector<Route> backend;
  BaseUrls hosts = BaseUrls::builtIn();
  std::vector<Step> steps;  // in the order of time
  Duration until{};         // at which it ends
};

}  // namespace orlan::simulate
