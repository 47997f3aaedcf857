#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "orlan/platform/MainGate.hpp"

namespace orlan {
namespace {

/// A main loop of the thread that made it, run by hand.
class HandLoop final : public MainLoop {
 public:
  void async(std::function<void()> task) override {
    const std::lock_guard lock(mutex_);
    tasks_.push_back(std::move(task));
  }
  [[nodiscard]] bool isCurrent() const override { return std::this_thread::get_id() == thread_; }
  Subscription after(Duration, std::function<void()>) override { return {}; }
  Subscription every(Duration, std::function<void()>) override { return {}; }

  void run() {
    std::unique_lock lock(mutex_);
    const auto tasks = std::exchange(tasks_, {});
    lock.unlock();
    for (const auto& task : tasks) task();
  }

 private:
  const std::thread::id thread_ = std::this_thread::get_id();
  std::mutex mutex_;
  std::vector<std::function<void()>> tasks_;
};

TEST(MainGate, PassesAtOnceOnTheMainThreadAndLaterFromElsewhereUntilItIsClosed) {
  HandLoop loop;
  auto gate = std::make_unique<MainGate>(loop);
  const auto pass = gate->pass();
  int passed = 0;
  pass([&] { ++passed; });
  EXPECT_EQ(passed, 1);
  std::thread([&] { pass([&] { ++passed; }); }).join();
  EXPECT_EQ(passed, 1);
  loop.run();
  EXPECT_EQ(passed, 2);
  std::thread([&] { pass([&] { ++passed; }); }).join();
  gate.reset();
  loop.run();
  pass([&] { ++passed; });
  EXPECT_EQ(passed, 2) << "neither what was posted before nor what comes after";
}

TEST(MainGate, MayCloseWithItsLoopWhileOthersKnock) {
  for (int round = 0; round < 50; ++round) {
    auto loop = std::make_unique<HandLoop>();
    auto gate = std::make_unique<MainGate>(*loop);
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
    while (knocks < 50) loop->run();
    gate.reset();
    const int passedByThen = passed;
    loop->run();
    loop.reset();
    for (auto& other : others) other.join();
    EXPECT_EQ(passed, passedByThen);
  }
}

}  // namespace
}  // namespace orlan
