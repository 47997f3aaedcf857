#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "orlan/base/Lazy.hpp"

namespace orlan {
namespace {

TEST(Lazy, ThreadsThatArriveTogetherGetOneObjectFinishedByItsHooksAndLookingMakesNone) {
  for (int round = 0; round < 200; ++round) {
    std::atomic<int> made = 0;
    Lazy<std::string> slot([&] { return std::make_shared<std::string>(std::to_string(++made)); });
    slot.onBuilt([](std::string& object) { object += "b"; });
    slot.onBuilt([](std::string& object) { object += "c"; });
    ASSERT_EQ(slot.ifBuilt(), nullptr);
    std::atomic<bool> go = false;
    std::vector<std::string> seen(2);
    std::vector<std::thread> threads;
    for (auto& each : seen) {
      threads.emplace_back([&] {
        while (!go) std::this_thread::yield();
        each = *slot;
      });
    }
    go = true;
    for (auto& thread : threads) thread.join();
    ASSERT_EQ(seen, (std::vector<std::string>{"1bc", "1bc"}));
    ASSERT_EQ(slot.ifBuilt(), &*slot);
  }
}

}  // namespace
}  // namespace orlan
