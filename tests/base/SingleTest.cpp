#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "orlan/base/Single.hpp"

namespace orlan {
namespace {

using Heard = std::vector<std::string>;

std::string words(const Result<int>& answer) {
  return answer ? std::to_string(*answer) : answer.error().description;
}

TEST(Single, AnswersEverySubscriberOnce) {
  auto [single, resolve] = Single<int>::pending();
  Heard heard;
  const auto listen = [&heard, &to = single](const char* name) {
    return to.subscribe([&heard, name](const Result<int>& answer) { heard.push_back(name + words(answer)); });
  };
  auto early = listen("early ");
  auto second = listen("second ");
  EXPECT_EQ(heard, Heard{});
  resolve(7);
  resolve(8);
  resolve(Unexpected(Error{"test", 1, "late"}));
  auto late = listen("late ");
  EXPECT_EQ(heard, (Heard{"early 7", "second 7", "late 7"}));
  EXPECT_FALSE(static_cast<bool>(late)) << "nothing is left to end";
}

TEST(Single, EndedSubscriberHearsNothingAndIsFreed) {
  auto [single, resolve] = Single<int>::pending();
  auto held = std::make_shared<int>(0);
  const auto count = [held](const Result<int>&) { ++*held; };
  Subscription victim;
  auto killer = single.subscribe([&](const Result<int>&) { victim.cancel(); });
  victim = single.subscribe(count);
  const auto before = held.use_count();
  single.subscribe(count).cancel();
  EXPECT_EQ(held.use_count(), before);
  resolve(1);
  EXPECT_EQ(*held, 0);
}

TEST(Single, APassRunsBeforeEachSubscriberOfItsOwn) {
  auto [single, resolve] = Single<int>::pending();
  Heard heard;
  const auto noting = [&](const char* word) {
    return [&heard, word](const Result<int>&) { heard.push_back(word); };
  };
  const auto passing = single.passing(noting("pass"));
  auto a = passing.subscribe(noting("a"));
  auto plain = single.subscribe(noting("plain"));
  resolve(1);
  auto b = passing.subscribe(noting("b"));
  EXPECT_EQ(heard, (Heard{"pass", "a", "plain", "pass", "b"}));
}

TEST(Single, SubscribersMayDestroyEverythingAround) {
  auto [made, resolver] = Single<int>::pending();
  auto single = std::make_unique<Single<int>>(std::move(made));
  auto resolve = std::make_unique<Single<int>::Resolver>(std::move(resolver));
  Heard heard;
  auto subscription = single->subscribe([&](const Result<int>& answer) {
    resolve.reset();
    single.reset();
    heard.push_back(words(answer));
  });
  (*resolve)(5);
  EXPECT_EQ(heard, Heard{"5"});

  auto answered = std::make_unique<Single<int>>(Single<int>::of(Unexpected(Error{"test", 1, "refused"})));
  auto late = answered->subscribe([&](const Result<int>& answer) {
    answered.reset();
    heard.push_back(words(answer));
  });
  EXPECT_EQ(heard, (Heard{"5", "refused"}));
}

TEST(Single, OneOfManyThreadsAnswers) {
  auto [single, resolve] = Single<int>::pending();
  std::atomic<int> answers = 0;
  auto subscription = single.subscribe([&](const Result<int>&) { ++answers; });
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back([i, resolve = resolve] { resolve(i); });
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(answers, 1);
}

}  // namespace
}  // namespace orlan
