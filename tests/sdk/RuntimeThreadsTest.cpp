#include <gtest/gtest.h>

#include <thread>

#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/Runtime.hpp"
#include "phones/simulated/SimulatedPhone.hpp"
#include "support/EchoHttp.hpp"

namespace orlan {
namespace {

// Answers come from another thread while the library is taken down; the sanitizers say whether anything is
// touched that is gone.
TEST(RuntimeThreads, MayEndAtAnyMoment) {
  sim::World world;
  sim::SimulatedPhone phone(world, {.location = {.position = Location{{51.5, -0.12}, 5.0, {}}}});
  test::EchoHttp http;
  phone::ThreadQueues queues;
  for (int round = 0; round < 300; ++round) {
    {
      Runtime runtime(test::with(phone.platform(), http, queues));
      runtime.services().plugin->start("KEY", Config::Environment::staging, {}, {});
      for (int turn = 0; turn < round % 7; ++turn) {
        world.settle();
        std::this_thread::yield();
      }
    }
    phone.relaunch();
    if (round % 3 == 0) phone.store().change("Orlan.DeviceRegistered.v1", nullptr);
  }
  EXPECT_EQ(phone.store().string("Orlan.DeviceID"), "D1") << "some rounds got as far as the answer";
}

}  // namespace
}  // namespace orlan
