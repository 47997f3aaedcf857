#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "campaigns/Fixtures.hpp"
#include "orlan/campaigns/LocationTrackingReliability.hpp"
#include "phones/common/ThreadQueue.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;

class ReliabilityThreads : public test::WithLogger {};

TEST_F(ReliabilityThreads, TakeCallsFromAnywhereAndFinishThemAtTheEnd) {
  constexpr int callers = 3;
  constexpr int calls = 150;
  const Platform parts = phone.platform();
  phone::ThreadQueues queues;  // real ones, while the main loop's time is driven here
  auto service = std::make_unique<LocationTrackingReliability>(parts.main, queues, parts.clock, parts.random,
                                                               phone.store(), logger);
  std::atomic<int> statuses = 0;
  const Subscription subscription =
      service->reliabilityStatusSubject().subscribe([&](ReliabilityStatus) { ++statuses; });

  std::vector<std::thread> threads;
  for (int caller = 0; caller < callers; ++caller) {
    threads.emplace_back([&, caller] {
      for (int i = 0; i < calls; ++i) {
        service->addPendingEvent("event", {{"caller", caller}, {"call", i}},
                                 LocationTrackingReliability::EventPriority::normal);
        service->updateLocation({});
        if (i % 10 == 0) service->processPendingEvents();
        if (i % 50 == 0) service->loadPendingEvents();
      }
    });
  }
  for (int second = 0; second < 100; ++second) world.runFor(1s);  // retries come due among the calls
  for (auto& thread : threads) thread.join();
  service.reset();

  EXPECT_EQ(statuses, callers * calls);
  EXPECT_TRUE(phone.store().bytes("Orlan_PendingEvents"));
  world.runFor(1h);  // timers that were asked for at the end find nobody
}

}  // namespace
}  // namespace orlan
