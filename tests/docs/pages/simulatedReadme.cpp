// The example of phones/simulated/README.md, compiled.

#include <iostream>

#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/Runtime.hpp"
#include "phones/simulated/Recorder.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

using namespace orlan;
using namespace std::chrono_literals;

int main() {
  sim::World world;  // virtual time, from 2026-01-01
  sim::SimulatedPhone phone(world);
  sim::Recorder seen;
  phone.observe(seen);  // what the outside world sees

  phone.http().answer("POST", "/api/device-registerd/create",
                      {sim::HttpAnswer::reply(200, R"({"data": {"device_id": "d-1", "orlan_id": "o-1"}})")});

  Runtime runtime(phone.platform());  // the library, on this phone
  OrlanPlugin& plugin = *runtime.services().plugin;
  plugin.start("api-key", Config::Environment::staging, {}, {});
  world.runFor(1s);  // runs what is due in it, in order
  phone.moveTo({51.5007, -0.1246});
  phone.application().moveTo(ApplicationState::background);
  world.runFor(24h);

  for (const auto& message : seen.messages()) std::cout << message << '\n';
}
