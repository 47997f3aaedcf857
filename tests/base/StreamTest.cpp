#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "orlan/base/Lifetime.hpp"
#include "orlan/base/Subject.hpp"

namespace orlan {
namespace {

using Heard = std::vector<std::string>;

class Stream : public testing::Test {
 protected:
  /// A subscriber that writes its name and the value down.
  Subscription listen(Publisher<int>& to, const std::string& name) {
    return to.subscribe([this, name](int value) { heard.push_back(name + std::to_string(value)); });
  }
  Subject<int> subject;
  Heard heard;
};

TEST_F(Stream, ReachesSubscribersInOrderUntilTheyEnd) {
  auto a = listen(subject, "a");
  auto b = listen(subject, "b");
  subject.send(1);
  a.cancel();
  subject.send(2);
  b = listen(subject, "c");
  subject.send(3);
  EXPECT_EQ(heard, (Heard{"a1", "b1", "b2", "c3"}));
}

TEST_F(Stream, SubscriberMayEndItselfAndOthersWhichThenHearNoMore) {
  auto first = listen(subject, "first");
  Subscription later, self;
  self = subject.subscribe([&](int value) {
    self.cancel();
    heard.push_back("self" + std::to_string(value));
    first.cancel();
    later.cancel();
  });
  later = listen(subject, "later");
  auto last = listen(subject, "last");
  subject.send(1);
  subject.send(2);
  EXPECT_EQ(heard, (Heard{"first1", "self1", "last1", "last2"}));
}

TEST_F(Stream, NewcomerDuringAnEmissionHearsFromTheNextOn) {
  SubscriptionBag bag;
  bag.add(subject.subscribe([&](int value) {
    if (value == 1) bag.add(listen(subject, "new"));
  }));
  subject.send(1);
  EXPECT_EQ(heard, Heard{});
  subject.send(2);
  EXPECT_EQ(heard, (Heard{"new2"}));
}

TEST_F(Stream, HandlerMaySendAgain) {
  auto loop = subject.subscribe([&](int value) {
    if (value < 3) subject.send(value + 1);
  });
  auto all = listen(subject, "a");
  subject.send(1);
  EXPECT_EQ(heard, (Heard{"a3", "a2", "a1"}));
}

TEST_F(Stream, MayBeDestroyedByItsSubscriber) {
  auto owned = std::make_unique<Subject<int>>();
  auto ender = owned->subscribe([&](int) { owned.reset(); });
  auto last = listen(*owned, "z");
  owned->send(1);
  EXPECT_EQ(heard, (Heard{"z1"}));
  last.cancel();  // outlives its stream
  EXPECT_EQ(owned, nullptr);
}

TEST_F(Stream, BagEndsAllOfItsSubscriptionsAndFreesWhatTheyHeld) {
  SubscriptionBag bag;
  auto held = std::make_shared<int>(7);
  bag.add(listen(subject, "a"));
  bag.add(subject.subscribe([held](int) {}));
  EXPECT_FALSE(bag.empty());
  bag.add(subject.subscribe([&](int) { bag = {}; }));
  subject.send(1);
  subject.send(2);
  EXPECT_EQ(heard, (Heard{"a1"}));
  EXPECT_TRUE(bag.empty());
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(Stream, CurrentValueIsHeardAtOnceAndThenEveryChange) {
  CurrentValue<int> current(1);
  auto first = listen(current, "a");
  current.send(2);
  auto second = listen(current, "b");
  current.send(2);
  EXPECT_EQ(heard, (Heard{"a1", "a2", "b2", "a2", "b2"}));
}

TEST_F(Stream, NewSubscriberThatSendsHearsItsOwnValueLast) {
  CurrentValue<int> current(1);
  auto subscription = current.subscribe([&](int value) {
    heard.push_back(std::to_string(value));
    if (value == 1) current.send(2);
  });
  EXPECT_EQ(heard, (Heard{"1", "2"}));
}

TEST_F(Stream, ThreadsMaySubscribeAndEndWhileAnotherSends) {
  std::atomic<int> count = 0;
  std::atomic<bool> done = false;
  std::thread sender([&] {
    while (!done) subject.send(1);
  });
  for (int i = 0; i < 2'000; ++i) {
    auto a = subject.subscribe([&](int value) { count += value; });
    auto b = subject.subscribe([&](int value) { count += value; });
    a.cancel();
  }
  done = true;
  sender.join();
  const int before = count;
  subject.send(1);
  EXPECT_EQ(count, before);
}

TEST(SubscriptionHandle, EndsOnceWhenCancelledReplacedOrDestroyed) {
  int ends = 0;
  {
    Subscription subscription;
    const auto counted = [&] {
      return Subscription::onCancel([&] {
        ++ends;
        subscription.cancel();  // the end may look at the handle again
      });
    };
    subscription = counted();
    EXPECT_TRUE(static_cast<bool>(subscription));
    subscription.cancel();
    subscription.cancel();
    EXPECT_EQ(ends, 1);
    EXPECT_FALSE(static_cast<bool>(subscription));
    int others = 0;
    auto replaced = Subscription::onCancel([&] { ++others; });
    replaced = Subscription::onCancel([&] { ++others; });
    EXPECT_EQ(others, 1);
    subscription = std::move(replaced);
    EXPECT_EQ(others, 1);
    subscription = {};
    EXPECT_EQ(others, 2);
  }
  EXPECT_EQ(ends, 1);
}

TEST(LifetimeToken, TellsWhetherTheOwnerIsGone) {
  auto lifetime = std::make_unique<Lifetime>();
  const auto token = lifetime->token();
  const auto copy = token;
  EXPECT_TRUE(static_cast<bool>(copy));
  lifetime.reset();
  EXPECT_FALSE(static_cast<bool>(token));
  EXPECT_FALSE(static_cast<bool>(copy));
}

}  // namespace
}  // namespace orlan
