#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "orlan/platform/Platform.hpp"

namespace orlan {

template <class Phone>
class QueueContract : public ::testing::Test {
 protected:
  Phone phone;
  MainLoop& main = phone.platform().main;
  Queues& queues = phone.platform().queues;
};
TYPED_TEST_SUITE_P(QueueContract);

TYPED_TEST_P(QueueContract, TasksRunLaterInTheOrderOfPosting) {
  const auto queue = this->queues.make("test");
  for (SerialQueue* each : {static_cast<SerialQueue*>(&this->main), queue.get()}) {
    std::vector<int> ran;  // written by tasks of one queue, read when the last one has run
    std::atomic<bool> finished = false;
    bool ranInside = false;
    each->async([&] {  // posted from inside, so that a queue on another thread cannot run ahead of us
      each->async([&] {
        each->async([&] {
          ran.push_back(3);
          finished = true;
        });
        ran.push_back(1);
      });
      each->async([&] { ran.push_back(2); });
    });
    if (each == &this->main) ranInside = !ran.empty();
    ASSERT_TRUE(this->phone.runUntil([&] { return finished.load(); }));
    EXPECT_EQ(ran, (std::vector<int>{1, 2, 3}));
    EXPECT_FALSE(ranInside);
  }
}

TYPED_TEST_P(QueueContract, AQueueIsCurrentInItsOwnTasksOnly) {
  const auto one = this->queues.make("one");
  const auto other = this->queues.make("other");
  const auto whoIsCurrent = [&] {
    return std::string(this->main.isCurrent() ? "main " : "") + (one->isCurrent() ? "one " : "") +
           (other->isCurrent() ? "other " : "");
  };
  EXPECT_EQ(whoIsCurrent(), "main ");
  std::string inMain, inOne, inTimer, elsewhere;
  std::atomic<int> finished = 0;
  this->main.async([&] { inMain = whoIsCurrent(), ++finished; });
  one->async([&] { inOne = whoIsCurrent(), ++finished; });
  const auto timer = this->main.after(Duration(1), [&] { inTimer = whoIsCurrent(), ++finished; });
  ASSERT_TRUE(this->phone.runUntil([&] { return finished == 3; }));
  EXPECT_EQ(inMain, "main ");
  EXPECT_EQ(inOne, "one ");
  EXPECT_EQ(inTimer, "main ");
  std::thread([&] { elsewhere = whoIsCurrent(); }).join();
  EXPECT_EQ(elsewhere, "");
}

TYPED_TEST_P(QueueContract, EveryThreadMayPost) {
  const auto queue = this->queues.make("test");
  int onMain = 0;
  int onQueue = 0;
  std::atomic<int> finished = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 100; ++i) {
        this->main.async([&] { ++onMain, ++finished; });
        queue->async([&] { ++onQueue, ++finished; });
      }
    });
  }
  for (auto& each : threads) each.join();
  ASSERT_TRUE(this->phone.runUntil([&] { return finished == 800; }));
  EXPECT_EQ(onMain, 400);
  EXPECT_EQ(onQueue, 400);
}

TYPED_TEST_P(QueueContract, ADestroyedQueueRunsNothingAnyMore) {
  auto queue = this->queues.make("test");
  const auto running = std::make_shared<std::atomic<int>>(0);
  for (int i = 0; i < 50; ++i) queue->async([running] { ++*running; });
  queue.reset();
  const int atTheEnd = *running;
  this->phone.pass(std::chrono::milliseconds(5));
  EXPECT_EQ(*running, atTheEnd);
  EXPECT_EQ(running.use_count(), 1);  // the tasks are gone, with all that they held
}

TYPED_TEST_P(QueueContract, TimersRunOnceInTheOrderOfTheirDeadlines) {
  std::vector<std::string> ran;
  std::vector<Subscription> timers;
  const Duration begin = this->phone.monotonic();
  Duration end{};
  const auto note = [&](const char* name) { return [&ran, name] { ran.emplace_back(name); }; };
  timers.push_back(this->main.after(std::chrono::milliseconds(30), [&] {
    ran.emplace_back("last");
    end = this->phone.monotonic();
  }));
  timers.push_back(this->main.after(std::chrono::milliseconds(10), note("soon")));
  timers.push_back(this->main.after(Duration(-5), note("at once")));
  timers.push_back(this->main.after(std::chrono::hours(1), note("too early")));
  EXPECT_TRUE(ran.empty());
  ASSERT_TRUE(this->phone.runUntil([&] { return end > Duration::zero(); }));
  EXPECT_EQ(ran, (std::vector<std::string>{"at once", "soon", "last"}));
  EXPECT_GE(end - begin, std::chrono::milliseconds(30));
}

TYPED_TEST_P(QueueContract, AHandleCancelsItsTimer) {
  int ran = 0;
  auto cancelled = this->main.after(std::chrono::milliseconds(1), [&] { ++ran; });
  auto replaced = this->main.after(std::chrono::milliseconds(1), [&] { ++ran; });
  cancelled.cancel();
  replaced = this->main.after(std::chrono::milliseconds(2), [&] { ran += 100; });
  Subscription victim;
  const auto first = this->main.after(std::chrono::milliseconds(3), [&] { victim.cancel(); });
  victim = this->main.after(std::chrono::milliseconds(3), [&] { ++ran; });
  this->phone.pass(std::chrono::milliseconds(10));
  EXPECT_EQ(ran, 100);
}

TYPED_TEST_P(QueueContract, ARepeatingTimerTicksUntilItCancelsItself) {
  int ticks = 0;
  std::shared_ptr<int> held = std::make_shared<int>(0);
  Subscription timer;
  const Duration begin = this->phone.monotonic();
  timer = this->main.every(std::chrono::milliseconds(2), [&, held] {
    if (++ticks == 3) timer.cancel();
    ++*held;  // still alive after the cancellation
  });
  ASSERT_TRUE(this->phone.runUntil([&] { return ticks == 3; }));
  EXPECT_GE(this->phone.monotonic() - begin, std::chrono::milliseconds(6));
  this->phone.pass(std::chrono::milliseconds(10));
  EXPECT_EQ(ticks, 3);
  EXPECT_EQ(*held, 3);
  EXPECT_EQ(held.use_count(), 1);
}

REGISTER_TYPED_TEST_SUITE_P(QueueContract, TasksRunLaterInTheOrderOfPosting, AQueueIsCurrentInItsOwnTasksOnly,
                            EveryThreadMayPost, ADestroyedQueueRunsNothingAnyMore,
                            TimersRunOnceInTheOrderOfTheirDeadlines, AHandleCancelsItsTimer,
                            ARepeatingTimerTicksUntilItCancelsItself);

}  // namespace orlan
