#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "orlan/platform/MainGate.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan {
namespace {

TEST(MainGate, PassesAtOnceOnTheMainThreadAndLaterFromElsewhereUntilItIsClosed) {
  sim::World world;
  sim::SimulatedPhone phone(world);
  auto gate = std::make_unique<MainGate>(phone.platform().main);
  int passed = 0;
  const auto knock = [&, pass = gate->pass()] { pass([&] { ++passed; }); };
  knock();
  EXPECT_EQ(passed, 1);
  std::thread(knock).join();
  EXPECT_EQ(passed, 1);
  world.settle();
  EXPECT_EQ(passed, 2);
  std::thread(knock).join();
  gate.reset();
  world.settle();
  knock();
  EXPECT_EQ(passed, 2) << "neither what was posted before nor what comes after";
}

TEST(MainGate, MayCloseWithItsLoopWhileOthersKnock) {
  for (int round = 0; round < 50; ++round) {
    sim::World world;
    auto phone = std::make_unique<sim::SimulatedPhone>(world);
    auto gate = std::make_unique<MainGate>(phone->platform().main);
    int passed = 0;  // of the main thread, as a member of the gate's owner would be
    std::atomic<int> knocks = 0;
    std::vector<std::thread> others;
    for (int i = 0; i < 3; ++i) {
      others.emplace_back([&, pass = gate->pass()] {
        for (int knock = 0; knock < 100; ++knock) {
          pass([&] { ++passed; });
          ++knocks;
        }
      });
    }
    while (knocks < 50) world.settle();
    gate.reset();
    const int passedByThen = passed;
    world.settle();
    phone.reset();
    for (auto& other : others) other.join();
    EXPECT_EQ(passed, passedByThen);
  }
}

}  // namespace
}  // namespace orlan
