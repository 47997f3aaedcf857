// From a host's call of start to the delegate that hears of it, and the longest turns of the main thread on
// the way to campaigns, on the simulated phone: all of it is our own work, for virtual time costs nothing.
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <string>

#include "bench/Town.hpp"
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

double milliseconds(std::chrono::steady_clock::duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

/// When the main thread gets to hear of an answer.
struct AnswerTurn final : phone::PhoneObserver {
  void consoleLine(std::string_view, std::string_view message) override {
    if (message.starts_with("✅ Geofence fetch OK")) begin = std::chrono::steady_clock::now();
  }
  std::chrono::steady_clock::time_point begin;
};

/// A device that is known starts with campaigns in its cache, which were read ahead, hears the same ones, and
/// then others.
void turnsWithCampaigns(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  const std::string one = answerFor(Town(count, 66));
  const std::string other = answerFor(Town(count, 65));
  for (auto _ : state) {
    sim::World world;
    sim::SimulatedPhone phone(world, {.location = {.position = Location{{51.0, -1.3}, 5.0, {}}}});
    phone.http().answer("POST", "/api/device-registerd/create",
                        {sim::HttpAnswer::reply(200, R"({"data":{"device_id":"D1","orlan_id":"O1"}})")});
    const auto reply = [](const std::string& body) { return sim::HttpAnswer::reply(200, body); };
    phone.http().answer("POST", "/api/check-geofence",
                        {reply(one), sim::HttpAnswer::unreachable(), reply(one), reply(other)});
    AnswerTurn turn;
    phone.observe(turn);
    const auto delegate = std::make_shared<Waiting>();
    const auto run = [&](auto afterStart) {
      Runtime runtime(phone.platform());
      const Runtime::Scope scope(runtime);
      world.settle();
      const auto begin = std::chrono::steady_clock::now();
      runtime.services().plugin->start("KEY", Config::Environment::staging, {}, delegate);
      state.counters["start_ms"] = milliseconds(std::chrono::steady_clock::now() - begin);
      world.runFor(std::chrono::seconds(1));
      afterStart(runtime);
    };
    run([](Runtime&) {});
    phone.relaunch();
    run([&](Runtime& runtime) {
      const auto end = [&] { return milliseconds(std::chrono::steady_clock::now() - turn.begin); };
      const char* answer = "same_ms";
      const auto heard = runtime.services().geofence->polygonsPublisherPublic().subscribe(
          [&](const auto&) { state.counters[answer] = end(); });
      runtime.services().geofence->refetch();
      world.runFor(std::chrono::seconds(1));
      answer = "other_ms";
      runtime.services().geofence->refetch();
      world.runFor(std::chrono::seconds(1));
    });
  }
}
BENCHMARK(turnsWithCampaigns)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orlan::bench
