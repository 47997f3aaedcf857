#include <gtest/gtest.h>

#include <atomic>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
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
    while (true) {
      std::function<void()> task;
      {
        const std::lock_guard lock(mutex_);
        if (tasks_.empty()) return;
        task = std::move(tasks_.front());
        tasks_.pop_front();
      }
      task();
    }
  }

 private:
  const std::thread::id thread_ = std::this_thread::get_id();
  std::mutex mutex_;
  std::deque<std::function<void()>> tasks_;
};

TEST(MainGate, PassesAtOnceOnTheMainThreadAndLaterFromElsewhere) {
  HandLoop loop;
  const MainGate gate(loop);
  int passed = 0;
  gate.pass()([&] { ++passed; });
  EXPECT_EQ(passed, 1);
  std::thread([&, pass = gate.pass()] { pass([&] { ++passed; }); }).join();
  EXPECT_EQ(passed, 1);
  loop.run();
  EXPECT_EQ(passed, 2);
}

TEST(MainGate, NothingPassesOnceItIsClosed) {
  HandLoop loop;
  auto gate = std::make_unique<MainGate>(loop);
  const auto pass = gate->pass();
  bool passed = false;
  std::thread([&] { pass([&] { passed = true; }); }).join();
  gate.reset();
  loop.run();
  pass([&] { passed = true; });
  EXPECT_FALSE(passed) << "neither what was posted before nor what comes after";
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
