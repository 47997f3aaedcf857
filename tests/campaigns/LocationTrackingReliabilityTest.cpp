#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "campaigns/Fixtures.hpp"
#include "orlan/campaigns/LocationTrackingReliability.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;
using Priority = LocationTrackingReliability::EventPriority;
using PendingEvent = LocationTrackingReliability::PendingEvent;
using FailedEvent = LocationTrackingReliability::FailedEvent;

/// Numbers for identifiers, and outcomes as told: an attempt that nobody expected fails the test.
class ScriptedRandom final : public RandomSource {
 public:
  std::deque<bool> outcomes;
  std::uint64_t identifiers = 0;  // numbers still wanted for identifiers

  std::uint64_t next() override {
    if (identifiers > 0) {
      --identifiers;
      return ++count_;
    }
    if (outcomes.empty()) {
      ADD_FAILURE() << "one attempt too many";
      return 1;
    }
    const bool succeeds = outcomes.front();
    outcomes.pop_front();
    return succeeds ? 1 : 0;
  }

 private:
  std::uint64_t count_ = 0;
};

constexpr bool succeed = true;
constexpr bool fail = false;

class Reliability : public test::WithLogger {
 protected:
  void launch() {
    const Platform parts = phone.platform();
    service = std::make_unique<LocationTrackingReliability>(parts.main, parts.queues, parts.clock, random,
                                                            parts.store, logger);
  }
  void kill() {
    service.reset();
    phone.relaunch();
  }
  void start() {
    service->loadPendingEvents();
    service->loadFailedEvents();
    service->processPendingEvents();
    world.settle();
  }

  void add(const char* type, Priority priority, std::deque<bool> outcomes) {
    random.identifiers = 2;
    service->addPendingEvent(type, {{"campaign_id", 42}}, priority);
    random.outcomes = std::move(outcomes);
    world.settle();
    EXPECT_TRUE(random.outcomes.empty()) << random.outcomes.size() << " attempts did not happen";
  }

  /// Lets time pass in which exactly these attempts happen.
  void pass(Duration time, std::deque<bool> outcomes = {}) {
    random.outcomes = std::move(outcomes);
    world.runFor(time);
    EXPECT_TRUE(random.outcomes.empty()) << random.outcomes.size() << " attempts did not happen";
  }

  template <class Event>
  std::vector<Event> stored(std::string_view key) {
    const auto bytes = phone.store().bytes(key);
    if (!bytes) return {};
    const auto events = json::decodeText<std::vector<Event>>(*bytes);
    EXPECT_TRUE(events) << *bytes;
    return events.value_or(std::vector<Event>{});
  }
  std::vector<PendingEvent> pending() { return stored<PendingEvent>("Orlan_PendingEvents"); }
  std::vector<FailedEvent> failed() { return stored<FailedEvent>("Orlan_FailedEvents"); }

  ScriptedRandom random;
  std::unique_ptr<LocationTrackingReliability> service;
};

TEST_F(Reliability, WaitsFiveThenTenSecondsThenGivesUp) {
  launch();
  add("geo_activity", Priority::critical, {fail});
  const std::string id = pending().at(0).id;
  EXPECT_EQ(id.size(), 36u);
  EXPECT_EQ(phone.store().bytes("Orlan_PendingEvents"),
            R"([{"id":")" + id + R"(","eventType":"geo_activity","data":{"campaign_id":"42"},)" +
                R"("timestamp":788918400.0,"retryCount":0,"priority":3}])");
  pass(4'999'999us);
  pass(1us, {fail});
  pass(9'999'999us);
  EXPECT_EQ(pending().size(), 1u);
  pass(1us, {fail});
  EXPECT_EQ(phone.store().bytes("Orlan_PendingEvents"), "[]");
  EXPECT_EQ(phone.store().bytes("Orlan_FailedEvents"),
            R"([{"id":")" + id + R"(","eventType":"geo_activity","data":{"campaign_id":"42"},)" +
                R"("timestamp":788918400.0,"error":"Max retry attempts exceeded","retryCount":2}])");
  pass(1h);
}

TEST_F(Reliability, AttemptsTheUrgentFirst) {
  launch();
  const auto left = [&] { return pending().size() == 1 ? pending()[0].eventType : "not one"; };
  add("low", Priority::low, {fail});
  add("normal", Priority::normal, {succeed, fail});
  EXPECT_EQ(left(), "low");
  add("high", Priority::high, {fail, succeed});
  EXPECT_EQ(left(), "high");
  add("critical", Priority::critical, {succeed, fail});  // in the same pass, before what came before
  EXPECT_EQ(left(), "high");
}

TEST_F(Reliability, ARetryStaysDueBesideThatOfAnotherSeries) {
  launch();
  add("first", Priority::high, {fail});  // retry due at 5 s
  pass(2s);
  add("second", Priority::low, {fail, succeed});  // a second series of the first: due at 7 s
  pass(3s, {fail});                               // the retry of the first series: due again at 15 s
  pass(2s, {fail});                               // of the second series, the latest of all: due at 17 s
  pass(8s, {fail});                               // the first series is over
  EXPECT_TRUE(pending().empty());
  ASSERT_EQ(failed().size(), 1u);
  pass(1h);  // the latest retry ended with the event
}

TEST_F(Reliability, SuccessEndsTheLatestRetry) {
  launch();
  add("first", Priority::high, {fail});
  pass(5s, {succeed});
  EXPECT_TRUE(pending().empty());
  add("second", Priority::high, {fail});
  pass(1s);
  random.outcomes = {succeed};
  service->processPendingEvents();
  world.settle();
  EXPECT_TRUE(pending().empty());
  EXPECT_TRUE(failed().empty());
  pass(1h);
}

TEST_F(Reliability, StartsAnewAfterARelaunch) {
  launch();
  add("kept", Priority::normal, {fail});
  add("given up", Priority::high, {fail, succeed});
  pass(5s, {fail});
  pass(10s, {fail});
  ASSERT_EQ(failed().size(), 1u);
  add("kept too", Priority::low, {fail});
  kill();
  launch();
  pass(1h);  // no retry outlives the process

  random.outcomes = {fail};
  start();
  EXPECT_EQ(pending().size(), 1u);
  pass(5s, {fail});
  pass(10s, {fail});
  EXPECT_TRUE(pending().empty());
  EXPECT_EQ(failed().size(), 2u);  // those of before are still there
}

TEST_F(Reliability, TakesADamagedStoreForAnEmptyOne) {
  const char* notEvents[] = {
      "[]]", R"([{"id":"x"}])",
      R"([{"id":"x","eventType":"","data":{},"timestamp":0,"retryCount":0,"priority":4}])",
      R"([{"id":"x","eventType":"","data":{"a":1},"timestamp":0,"retryCount":0,"priority":1}])"};
  for (const char* text : notEvents) {
    phone.store().change("Orlan_PendingEvents", Bytes{text});
    phone.store().change("Orlan_FailedEvents", Bytes{text});
    launch();
    start();  // nothing to attempt
    kill();
  }
  phone.store().change("Orlan_PendingEvents", "[]");  // text, not bytes
  launch();
  start();
  add("new", Priority::high, {fail});
  EXPECT_EQ(pending().size(), 1u);
}

TEST_F(Reliability, WritesNoListThatHoldsWhatJsonCannot) {
  launch();
  for (const char* type : {"written", "\xff", "after it"}) {
    add(type, Priority::high, {fail});
    pass(5s, {fail});
    pass(10s, {fail});
    EXPECT_TRUE(pending().empty());
    ASSERT_EQ(failed().size(), 1u) << type;
    EXPECT_EQ(failed()[0].eventType, "written");
  }
}

TEST_F(Reliability, EmitsTheStatusAfterEveryFix) {
  launch();
  std::vector<ReliabilityStatus> statuses;
  const Subscription subscription =
      service->reliabilityStatusSubject().subscribe([&](ReliabilityStatus s) { statuses.push_back(s); });
  for (const double accuracy : {5.0, 45.0, 250.0, -400.0}) service->updateLocation({{}, accuracy, {}});
  EXPECT_TRUE(statuses.empty());  // not inside the call
  world.settle();
  EXPECT_EQ(statuses, (std::vector{ReliabilityStatus::optimal, ReliabilityStatus::degraded,
                                   ReliabilityStatus::critical, ReliabilityStatus::critical}));
}

TEST_F(Reliability, NothingRunsAfterItsEnd) {
  launch();
  add("event", Priority::high, {fail});
  random.identifiers = 2;
  service->addPendingEvent("on its way", {}, Priority::high);
  service->updateLocation({});
  service.reset();  // with a task on the queue and a timer on the main loop
  pass(1h);
  EXPECT_EQ(pending().size(), 1u);
}

}  // namespace
}  // namespace orlan
