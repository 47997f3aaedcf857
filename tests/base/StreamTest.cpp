#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

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

TEST_F(Stream, HandlerMaySubscribeAndSendAgain) {
  Subscription newcomer;
  auto loop = subject.subscribe([&](int value) {
    if (value == 1) newcomer = listen(subject, "new");
    if (value < 3) subject.send(value + 1);
  });
  auto all = listen(subject, "a");
  subject.send(1);
  EXPECT_EQ(heard, (Heard{"a3", "new3", "a2", "new2", "a1"}));
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
  const auto held = std::make_shared<int>(7);
  bag.add(listen(subject, "a"));
  bag.add(subject.subscribe([held](int) {}));
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
  auto second = current.subscribe([&](int value) {
    heard.push_back("b" + std::to_string(value));
    if (value == 2) current.send(3);
  });
  current.send(3);
  EXPECT_EQ(heard, (Heard{"a1", "a2", "b2", "a3", "b3", "a3", "b3"}));
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
  const auto counted = [&] { return Subscription::onCancel([&] { ++ends; }); };
  Subscription subscription;
  subscription = Subscription::onCancel([&] {
    ++ends;
    subscription.cancel();  // the end may look at the handle again
  });
  EXPECT_TRUE(static_cast<bool>(subscription));
  subscription.cancel();
  subscription.cancel();
  EXPECT_EQ(ends, 1);
  EXPECT_FALSE(static_cast<bool>(subscription));
  {
    auto replaced = counted();
    replaced = counted();
    EXPECT_EQ(ends, 2);
    subscription = std::move(replaced);
  }
  EXPECT_EQ(ends, 2);
  subscription = {};
  EXPECT_EQ(ends, 3);
}

}  // namespace
}  // namespace orlan
