#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <cmath>
#include <csignal>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "phones/common/ThreadQueue.hpp"
#include "phones/linux/EventLoop.hpp"
#include "phones/linux/SignalStop.hpp"

namespace orlan::linuxphone {
namespace {

using std::chrono::milliseconds;
using Ran = std::vector<std::string>;

/// Time that stands still until it is told otherwise, for what must not depend on the machine's speed.
class SteppedTime final : public TimeSource {
 public:
  [[nodiscard]] TimePoint wallNow() const override { return TimePoint(now); }
  [[nodiscard]] Duration monotonicNow() const override { return now; }
  [[nodiscard]] std::chrono::nanoseconds realTime(Duration) const override { return milliseconds(0); }
  Duration now{};
};

class EventLoopTest : public ::testing::Test {
 protected:
  std::function<void()> note(const std::string& name) {
    return [this, name] { ran.push_back(name); };
  }
  void turn() {
    const auto soon = loop.after(Duration(1), [] {});  // so that the turn does not sleep
    bool once = false;
    (void)loop.runUntil([&] { return std::exchange(once, true); }, milliseconds(1000));
  }

  SteppedTime time;
  EventLoop loop{time};
  Ran ran;
};

TEST_F(EventLoopTest, DeadlinesDecideThenTheOrderOfStarting) {
  const auto late = loop.after(milliseconds(2), note("late timer"));
  const auto first = loop.after(milliseconds(1), note("timer 1"));
  const auto second = loop.after(milliseconds(1), note("timer 2"));
  loop.async(note("posted"));
  turn();
  time.now = milliseconds(5);
  loop.async(note("posted after they were due"));
  const auto immediate = loop.after(milliseconds(-7), note("at once"));
  turn();
  EXPECT_EQ(ran,
            (Ran{"posted", "timer 1", "timer 2", "late timer", "posted after they were due", "at once"}));
}

TEST_F(EventLoopTest, MissedTicksDoNotPileUpAndTheRhythmStays) {
  const auto ticking =
      loop.every(milliseconds(10), [this] { ran.push_back(std::to_string(time.now / milliseconds(1))); });
  for (const int now : {9, 10, 19, 20, 57, 59, 60, 70}) {
    time.now = milliseconds(now);
    turn();
  }
  EXPECT_EQ(ran, (Ran{"10", "20", "57", "60", "70"}));
}

TEST_F(EventLoopTest, FarAwayDeadlinesNeitherOverflowNorRun) {
  const auto never = loop.after(Duration::max(), note("never"));
  const auto hardly = loop.every(Duration::max(), note("hardly ever"));
  time.now = std::chrono::hours(24 * 365 * 1000);
  const auto later = loop.after(Duration::max(), note("later"));
  turn();
  EXPECT_EQ(ran, Ran{});
}

TEST_F(EventLoopTest, ATaskThatPostsItselfDoesNotStarveAWatchedFile) {
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const FileDescriptor ours(ends[0]);
  FileDescriptor theirs(ends[1]);
  std::function<void()> again = [&] {
    time.now += Duration(1);
    loop.async(again);
  };
  loop.async(again);
  Subscription second;
  Subscription first = loop.watch(ours.get(), [&] {
    char c = 0;
    const bool open = ::read(ours.get(), &c, 1) == 1;
    ran.push_back(open ? std::string(1, c) : "end");
    second.cancel();
    if (!open) first.cancel();
  });
  second = loop.watch(ours.get(), note("a watch that ended"));
  ASSERT_EQ(::write(theirs.get(), "ab", 2), 2);
  ASSERT_TRUE(loop.runUntil([&] { return ran.size() == 2; }, milliseconds(5000)));
  theirs.close();
  ASSERT_TRUE(loop.runUntil([&] { return ran.size() == 3; }, milliseconds(5000)));
  turn();
  EXPECT_EQ(ran, (Ran{"a", "b", "end"}));
  again = [] {};
  loop.runPosted();
}

TEST(EventLoopLife, WhatIsPostedRunsAtTheEndTimersDoNot) {
  const SteppedTime time;
  Ran ran;
  Subscription handle;
  const auto held = std::make_shared<int>();
  {
    EventLoop loop(time);
    handle = loop.after(Duration(0), [held, &ran] { ran.push_back("timer"); });
    loop.async([&] {
      ran.push_back("posted");
      loop.async([&] { ran.push_back("posted by it"); });
    });
  }
  EXPECT_EQ(ran, (Ran{"posted", "posted by it"}));
  handle.cancel();  // the loop is gone already
  EXPECT_EQ(held.use_count(), 1);
}

TEST(EventLoopLife, AnotherThreadWakesAndStopsIt) {
  const RealTime time;
  EventLoop loop(time);
  Subscription timer;
  bool ran = false;
  std::thread other([&] {
    EXPECT_FALSE(loop.isCurrent());
    loop.async([&] { ran = true; });
    timer = loop.after(milliseconds(1), [&] { loop.stop(); });
  });
  loop.run();  // would sleep for ever
  other.join();
  EXPECT_TRUE(ran);
  loop.stop();
  loop.run();  // a stop that came before
}

TEST(EventLoopLife, ASignalBecomesATaskAndASecondOneStrikes) {
  const RealTime time;
  EventLoop loop(time);
  for (const int signal : {SIGINT, SIGTERM}) {
    ::signal(signal, SIG_IGN);
    int heard = 0;
    {
      const SignalStop stop(loop, [&](int number) {
        heard = loop.isCurrent() ? number : -1;
        loop.stop();
      });
      ::raise(signal);
      EXPECT_EQ(heard, 0);
      loop.run();
      EXPECT_EQ(heard, signal);
      EXPECT_EQ(::signal(signal, SIG_DFL), SIG_DFL);  // a second one would have ended the process
    }
    EXPECT_EQ(::signal(signal, SIG_DFL), SIG_IGN);  // as it was
  }
}

TEST(ReplayTime, AChangeOfPaceIsNoJump) {
  ReplayTime time(1.0, {});
  for (const double scale : {1e6, 1e-3, 600.0, 1.0}) {
    const auto realBefore = std::chrono::steady_clock::now();
    const Duration before = time.monotonicNow();
    time.setScale(scale);
    const Duration after = time.monotonicNow();
    const std::chrono::duration<double, std::micro> real = std::chrono::steady_clock::now() - realBefore;
    EXPECT_GE(after, before) << scale;
    EXPECT_LE(static_cast<double>((after - before).count()), real.count() * 1e6 + 1) << scale;
  }
}

TEST(ReplayTime, NeverSleepsTooShortAndTakesAnyScale) {
  const std::pair<double, double> rows[] = {{600.0, 600.0}, {0.0, 1e-3}, {std::nan(""), 1.0}, {1e300, 1e6}};
  for (const auto& [scale, used] : rows) {
    const ReplayTime time(scale, {});
    for (const Duration wait : {Duration(1), Duration(999'983)}) {
      const double slept = static_cast<double>(time.realTime(wait).count()) / 1000.0 * used;
      EXPECT_NEAR(slept, static_cast<double>(wait.count()), used / 1000.0) << scale;
      EXPECT_GE(slept, static_cast<double>(wait.count())) << scale;
    }
    EXPECT_EQ(time.realTime(Duration(-5)).count(), 0);
    EXPECT_GT(time.realTime(Duration::max()), std::chrono::hours(1));
  }
}

TEST(ThreadQueueLife, ItsEndRunsWhatIsPostedAndWhatThatPosts) {
  for (int round = 0; round < 50; ++round) {
    int ran = 0;
    {
      phone::ThreadQueue queue("test");
      queue.async([&] { queue.async([&] { ++ran; }); });
    }
    ASSERT_EQ(ran, 1);
  }
}

TEST(ThreadQueueLife, LeavesInterruptionsToTheHostAndFaultsToItsHandlers) {
  sigset_t blocked;
  {
    phone::ThreadQueue queue("test");
    queue.async([&] { pthread_sigmask(SIG_BLOCK, nullptr, &blocked); });
  }
  for (const int signal : {SIGINT, SIGTERM, SIGCHLD, SIGPIPE}) EXPECT_EQ(sigismember(&blocked, signal), 1);
  for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTRAP, SIGSYS})
    EXPECT_EQ(sigismember(&blocked, fault), 0) << fault;
}

TEST(ThreadQueueLife, ATaskMayDestroyItsOwnQueue) {
  std::atomic<bool> mayStart = false;
  std::atomic<bool> over = false;
  auto queue = std::make_unique<phone::ThreadQueue>("test");
  queue->async([&] {
    while (!mayStart) std::this_thread::yield();
    queue.reset();
  });
  queue->async([&] { over = true; });
  mayStart = true;
  while (!over) std::this_thread::yield();
}

}  // namespace
}  // namespace orlan::linuxphone
