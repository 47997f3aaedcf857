// From a host's call of start to the delegate that hears of it, on the simulated phone: all of it is our own
// work, for virtual time costs nothing.
#include <benchmark/benchmark.h>

#include <memory>

#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/Runtime.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan::bench {
namespace {

struct Waiting final : OrlanPluginDelegate {
  void didAuthenticate(OrlanPlugin&, const std::string&, const std::string&) override {
    authenticated = true;
  }
  bool authenticated = false;
};

void startToAuthenticated(benchmark::State& state) {
  for (auto _ : state) {
    sim::World world;
    sim::SimulatedPhone phone(world);
    phone.http().answer("POST", "/api/device-registerd/create",
                        {sim::HttpAnswer::reply(200, R"({"data":{"device_id":"D1","orlan_id":"O1"}})")});
    Runtime runtime(phone.platform());
    const Runtime::Scope scope(runtime);
    const auto delegate = std::make_shared<Waiting>();
    runtime.services().plugin->start("KEY", Config::Environment::staging, {}, delegate);
    world.runFor(std::chrono::seconds(1));
    if (!delegate->authenticated) state.SkipWithError("not authenticated");
  }
}
BENCHMARK(startToAuthenticated)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace orlan::bench
