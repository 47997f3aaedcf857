#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "phones/simulated/SimulatedPhone.hpp"
#include "phones/simulated/World.hpp"

namespace orlan::sim {
namespace {

using namespace std::chrono_literals;

TEST(World, EqualDeadlinesRunInTheOrderOfPostingWhicheverPhone) {
  World world;
  SimulatedPhone anna(world), bela(world);
  std::string ran;
  const auto note = [&](char c) { return [&ran, c] { ran += c; }; };
  SubscriptionBag timers;
  timers.add(bela.platform().main.every(1s, note('a')));
  timers.add(anna.platform().main.after(2s, [&] {
    ran += 'b';
    anna.platform().main.async(note('f'));
  }));
  timers.add(bela.platform().main.after(2s, note('c')));
  timers.add(anna.platform().main.after(1s, [&] {
    ran += 'x';
    timers.add(anna.platform().main.after(1s, note('e')));
  }));
  timers.add(anna.platform().main.after(2s, note('d')));
  world.runUntil(2s);  // what is due at that very moment, too
  EXPECT_EQ(ran, "axabcdef");
}

TEST(World, TimeStandsStillInsideATaskAndOutsideTheRuns) {
  World world;
  SimulatedPhone phone(world);
  Duration seen{};
  const auto timer = phone.platform().main.after(1500ms, [&] { seen = world.now(); });
  world.settle();
  EXPECT_EQ(world.now(), 0s);
  world.runFor(10s);
  EXPECT_EQ(seen, 1500ms);
  EXPECT_EQ(world.now(), 10s);
  world.runUntil(5s);  // it is later already
  EXPECT_EQ(world.now(), 10s);
  const auto never = phone.platform().main.after(Duration::max(), [] { FAIL(); });
  world.runFor(24h * 366 * 1000);
}

TEST(World, TheWallClockJumpsWithoutTheTimers) {
  World world({.start = TimePoint(1000s)});
  SimulatedPhone anna(world), bela(world);
  int ticks = 0;
  const auto timer = anna.platform().main.every(1s, [&] { ++ticks; });
  anna.clock().set(TimePoint(7000s));
  anna.clock().set(TimePoint(10s));
  world.runFor(5s);
  EXPECT_EQ(anna.platform().clock.now(), TimePoint(15s));
  EXPECT_EQ(bela.platform().clock.now(), TimePoint(1005s));
  world.setWallClock(TimePoint(2005s));
  EXPECT_EQ(anna.platform().clock.now(), TimePoint(1015s));
  EXPECT_EQ(bela.platform().clock.now(), TimePoint(2005s));
  EXPECT_EQ(ticks, 5);
}

TEST(World, RandomnessFollowsFromTheSeedAndThePhone) {
  std::set<std::string> different;
  for (const std::uint64_t seed : {0, 1, 2, 3, 0}) {
    World world({.seed = seed});
    SimulatedPhone anna(world), bela(world);
    for (const auto& phone : {anna.platform(), bela.platform(), anna.platform()}) {
      different.insert(randomUuid(phone.random));
    }
  }
  EXPECT_EQ(different.size(), 12U);
}

TEST(WorldDeathTest, MistakesEndTheProcessInEveryBuild) {
  World world;
  SimulatedPhone phone(world), elsewhere(world);
  const auto queue = phone.platform().queues.make("com.example.work");
  EXPECT_DEATH(queue->assertCurrent(), "called outside its queue \"com.example.work\"");
  const auto dies = [&](SerialQueue& in, const std::function<void()>& task, const char* message) {
    EXPECT_DEATH((in.async(task), world.settle()), message);
  };
  MainLoop& main = phone.platform().main;
  const std::function<void()> again = [&] { main.async(again); };
  dies(
      *queue, [&] { main.assertCurrent(); }, "called outside its queue \"main\"");
  dies(
      main, [&] { elsewhere.platform().application.registerForRemoteNotifications(); },
      "outside its queue \"main\"");
  dies(
      main, [&] { world.runFor(1s); }, "time cannot be driven from inside a task");
  dies(main, again, "this instant never ends");
}

}  // namespace
}  // namespace orlan::sim
