#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "orlan/base/Lazy.hpp"

namespace orlan {
namespace {

TEST(Lazy, IsMadeAtFirstUseAndNeverByLooking) {
  int made = 0;
  Lazy<std::string> slot([&] { return std::make_shared<std::string>(std::to_string(++made)); });
  slot.onBuilt([](std::string& object) { object += "b"; });
  slot.onBuilt([](std::string& object) { object += "c"; });
  EXPECT_EQ(slot.ifBuilt(), nullptr);
  EXPECT_EQ(made, 0);
  EXPECT_EQ(*slot, "1bc") << "hooks run before the first user sees it";
  EXPECT_EQ(slot->size(), 3U);
  EXPECT_EQ(slot.ifBuilt(), &*slot);
  EXPECT_EQ(made, 1);
}

TEST(Lazy, ThreadsThatArriveTogetherGetOneFinishedObject) {
  for (int round = 0; round < 200; ++round) {
    std::atomic<int> made = 0;
    Lazy<std::vector<int>> slot([&] {
      ++made;
      return std::make_shared<std::vector<int>>(100, 7);
    });
    slot.onBuilt([](std::vector<int>& object) { object.push_back(8); });
    std::atomic<bool> go = false;
    std::vector<std::size_t> sizes(2);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
      threads.emplace_back([&, i] {
        while (!go) std::this_thread::yield();
        sizes[i] = slot->size();
      });
    }
    go = true;
    for (auto& thread : threads) thread.join();
    ASSERT_EQ(made, 1);
    ASSERT_EQ(sizes, (std::vector<std::size_t>{101, 101}));
  }
}

}  // namespace
}  // namespace orlan
