#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>

#include "orlan/platform/Platform.hpp"

namespace orlan {

template <class Phone>
class QueueContract : public ::testing::Test {
 protected:
  Phone phone;
  MainLoop& main = phone.platform().main;
  std::unique_ptr<SerialQueue> queue = phone.platform().queues.make("test");
};
TYPED_TEST_SUITE_P(QueueContract);

TYPED_TEST_P(QueueContract, TasksRunLaterInTheOrderOfPosting) {
  for (SerialQueue* each : {static_cast<SerialQueue*>(&this->main), this->queue.get()}) {
    std::string ran;  // written by tasks of one queue, read when the last one has run
    std::atomic<bool> finished = false;
    each->async([&] {  // posted from inside, so that a queue on another thread cannot run ahead of us
      each->async([&] {
        each->async([&] {
          ran += '4';
          finished = true;
        });
        ran += '2';
      });
      each->async([&] { ran += '3'; });
      ran += '1';
    });
    if (each == &this->main) {
      EXPECT_EQ(ran, "");
    }
    ASSERT_TRUE(this->phone.runUntil([&] { return finished.load(); }));
    EXPECT_EQ(ran, "1234");
  }
}

TYPED_TEST_P(QueueContract, AQueueIsCurrentInItsOwnTasksOnly) {
  const auto other = this->phone.platform().queues.make("other");
  const auto whoIsCurrent = [&] {
    return std::string(this->main.isCurrent() ? "main " : "") + (this->queue->isCurrent() ? "queue " : "") +
           (other->isCurrent() ? "other " : "");
  };
  EXPECT_EQ(whoIsCurrent(), "main ");
  std::string inMain, inQueue, inTimer, elsewhere;
  std::atomic<int> finished = 0;
  this->main.async([&] { inMain = whoIsCurrent(), ++finished; });
  this->queue->async([&] { inQueue = whoIsCurrent(), ++finished; });
  const auto timer = this->main.after(Duration(1), [&] { inTimer = whoIsCurrent(), ++finished; });
  ASSERT_TRUE(this->phone.runUntil([&] { return finished == 3; }));
  std::thread([&] { elsewhere = whoIsCurrent(); }).join();
  EXPECT_EQ(inMain + inQueue + inTimer + elsewhere, "main queue main ");
}

TYPED_TEST_P(QueueContract, EveryThreadMayPost) {
  int onMain = 0;  // neither is guarded: the queues' order is what keeps them whole
  int onQueue = 0;
  std::atomic<int> finished = 0;
  const auto post = [&] {
    for (int i = 0; i < 100; ++i) {
      this->main.async([&] { ++onMain, ++finished; });
      this->queue->async([&] { ++onQueue, ++finished; });
    }
  };
  std::thread threads[] = {std::thread(post), std::thread(post), std::thread(post), std::thread(post)};
  for (auto& each : threads) each.join();
  ASSERT_TRUE(this->phone.runUntil([&] { return finished == 800; }));
  EXPECT_EQ(onMain, 400);
  EXPECT_EQ(onQueue, 400);
}

TYPED_TEST_P(QueueContract, ADestroyedQueueRunsNothingAnyMore) {
  const auto ran = std::make_shared<std::atomic<int>>(0);
  for (int i = 0; i < 50; ++i) this->queue->async([ran] { ++*ran; });
  this->queue.reset();
  const int atTheEnd = *ran;
  this->phone.pass(std::chrono::milliseconds(5));
  EXPECT_EQ(*ran, atTheEnd);
  EXPECT_EQ(ran.use_count(), 1);  // the tasks are gone, with all that they held
}

TYPED_TEST_P(QueueContract, TimersRunOnceInTheOrderOfTheirDeadlines) {
  std::string ran;
  const auto note = [&](char name) { return [&ran, name] { ran += name; }; };
  const Duration begin = this->phone.monotonic();
  const Subscription timers[] = {this->main.after(std::chrono::milliseconds(30), note('c')),
                                 this->main.after(std::chrono::milliseconds(10), note('b')),
                                 this->main.after(Duration(-5), note('a')),
                                 this->main.after(std::chrono::hours(1), note('d'))};
  EXPECT_EQ(ran, "");
  ASSERT_TRUE(this->phone.runUntil([&] { return ran.ends_with('c'); }));
  EXPECT_GE(this->phone.monotonic() - begin, std::chrono::milliseconds(30));
  EXPECT_EQ(ran, "abc");
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
  const auto ticks = std::make_shared<int>(0);
  const Duration begin = this->phone.monotonic();
  Subscription timer;
  timer = this->main.every(std::chrono::milliseconds(2), [&timer, ticks] {
    if (*ticks == 2) timer.cancel();
    ++*ticks;  // what it holds is still alive after the cancellation
  });
  ASSERT_TRUE(this->phone.runUntil([&] { return *ticks == 3; }));
  EXPECT_GE(this->phone.monotonic() - begin, std::chrono::milliseconds(6));
  this->phone.pass(std::chrono::milliseconds(10));
  EXPECT_EQ(*ticks, 3);
  EXPECT_EQ(ticks.use_count(), 1);
}

REGISTER_TYPED_TEST_SUITE_P(QueueContract, TasksRunLaterInTheOrderOfPosting, AQueueIsCurrentInItsOwnTasksOnly,
                            EveryThreadMayPost, ADestroyedQueueRunsNothingAnyMore,
                            TimersRunOnceInTheOrderOfTheirDeadlines, AHandleCancelsItsTimer,
                            ARepeatingTimerTicksUntilItCancelsItself);

}  // namespace orlan
