// How costs grow with what has gathered, in requests for memory: a number that no machine's load changes.
#include <gtest/gtest.h>

#include <cstdlib>
#include <deque>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "geofence/Campaigns.hpp"
#include "orlan/campaigns/Detection.hpp"
#include "orlan/campaigns/EventAttempts.hpp"
#include "orlan/geofence/BackgroundRegionMonitor.hpp"
#include "support/FloorHost.hpp"

namespace {
thread_local std::size_t requests = 0;
}

// Not inline: where only one half of a pair is, the compiler takes it for a mistake.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++requests;
  return std::malloc(size > 0 ? size : 1);
}
[[gnu::noinline]] void* operator new(std::size_t size) {
  if (void* memory = ::operator new(size, std::nothrow)) return memory;
  throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
  std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace orlan::test {
namespace {

constexpr Coordinate home{51.5, -0.12};

template <class Act>
std::size_t requestsOf(Act act) {
  const std::size_t before = requests;
  act();
  return requests - before;
}

struct AlwaysFailing final : RandomSource {
  std::uint64_t next() override { return 0; }
};

/// One more event that fails for good, after `count` of them.
std::size_t failedEvent(int count) {
  FloorHost host;
  AlwaysFailing random;
  std::deque<std::pair<reliability::EventAttempts::Timer, reliability::PendingEvent>> due;
  reliability::EventAttempts attempts(
      random, host.platform.store,
      [&](auto timer, Duration, const reliability::PendingEvent& event) { due.emplace_back(timer, event); });
  const auto fail = [&](int id) {
    attempts.add({std::to_string(id), "geofence_entry", {{"campaign", "12"}}, {}, 0, {}});
    for (; !due.empty(); due.pop_front()) attempts.retry(due.front().first, due.front().second);
  };
  for (int id = 0; id < count; ++id) fail(id);
  return requestsOf([&] { fail(count); });
}

std::vector<CampaignPolygon> squares(int count) {
  std::vector<CampaignPolygon> made;
  for (int id = 1; id <= count; ++id) {
    made.push_back({square({home.latitude, home.longitude + 0.001 * id}), campaign(id, 10 * id)});
  }
  return made;
}

/// The nearest 20 of `count`, chosen and watched.
std::size_t selection(int count) {
  FloorHost host(sim::PhoneSettings{.location = {.position = Location{home, 5.0, {}}}});
  BackgroundRegionMonitor monitor(host.platform.main, host.platform.locations, host.services());
  const auto polygons = squares(count);
  return requestsOf([&] { monitor.updateRegions(polygons); });
}

/// One fix among `count` polygons, all of them answered and logged.
std::size_t fix(int count) {
  FloorHost host;
  const PolygonSet polygons(squares(count));
  return requestsOf([&] { (void)detectGeofences({home, 30.0, {}}, polygons, host.logger); });
}

TEST(Growth, IsNoWorseThanStated) {
  struct Row {
    const char* name;
    std::size_t (*cost)(int count);
    double most;  // times the requests for ten times as much
  };
  for (const Row& row :
       {Row{"failed events", failedEvent, 1.1}, Row{"selection", selection, 1.1}, Row{"a fix", fix, 4.0}}) {
    const auto few = static_cast<double>(row.cost(100));
    const auto many = static_cast<double>(row.cost(1000));
    EXPECT_GT(few, 0.0) << row.name;
    EXPECT_LE(many, row.most * few) << row.name << ": " << few << ", then " << many;
  }
}

}  // namespace
}  // namespace orlan::test
