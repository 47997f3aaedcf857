// One fix from its arrival at the foreground monitor to the last of what it sets off: detection, log lines,
// and for those that enter or leave an area the notification, the cooldown's store writes and the reports.
// The phone is simulated; what it does later (deliveries, answers, retries) is not timed.
#include <benchmark/benchmark.h>

#include <memory>
#include <optional>

#include "bench/MuteLog.hpp"
#include "bench/Town.hpp"
#include "orlan/geofence/ForegroundGeofenceMonitor.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan {
namespace {

struct NoCounter final : NotificationCounter {
  void recordFGNotification(std::string_view) override {}
  void recordBGNotification(std::string_view) override {}
};

/// A location service whose one manager hands fixes over as they come.
class Fixes final : public LocationService {
 public:
  class Manager final : public LocationManager {
   public:
    void setDelegate(std::weak_ptr<LocationManagerDelegate> to) override { delegate_ = std::move(to); }
    [[nodiscard]] LocationAuthorization authorizationStatus() const override { return {}; }
    void requestWhenInUseAuthorization() override {}
    void requestAlwaysAuthorization() override {}
    void setDesiredAccuracy(double) override {}
    void setDistanceFilter(double) override {}
    void setAllowsBackgroundUpdates(bool) override {}
    void startUpdatingLocation() override {}
    void stopUpdatingLocation() override {}
    void startMonitoringSignificantChanges() override {}
    void stopMonitoringSignificantChanges() override {}
    [[nodiscard]] std::optional<Location> location() const override { return {}; }
    void startMonitoring(const CircularRegion&) override {}
    void stopMonitoring(std::string_view) override {}
    [[nodiscard]] std::vector<CircularRegion> monitoredRegions() const override { return {}; }

    void deliver(const Location& fix) {
      if (const auto delegate = delegate_.lock()) delegate->didUpdateLocations(*this, {&fix, 1});
    }

   private:
    std::weak_ptr<LocationManagerDelegate> delegate_;
  };

  [[nodiscard]] std::shared_ptr<LocationManager> makeManager(std::string_view) override { return manager; }
  std::shared_ptr<Manager> manager = std::make_shared<Manager>();
};

/// The monitor on a phone of its own, watching a town whose areas all have something to say.
struct Walk {
  explicit Walk(std::size_t areas) : town(areas) {
    auto polygons = town.polygons();
    for (auto& entry : polygons) {
      auto campaign = *entry.campaign;
      for (const char* activation : {"ON_ENTER", "ON_EXIT"}) {
        CampaignData::Notification notification;
        notification.headline = "Good morning";
        notification.body = "A coffee on the house, two streets from here.";
        notification.activation = activation;
        campaign.outsideNotificationsArray.push_back(std::move(notification));
      }
      entry.campaign = SharedCampaign(std::move(campaign));
    }
    monitor.updatePolygons(polygons);
    monitor.start(nullptr);
  }

  bench::Town town;
  sim::World world;
  sim::SimulatedPhone phone{world};
  Platform platform = phone.platform();
  bench::MuteLog log;
  NoCounter counter;
  Fixes fixes;
  Lazy<LocationTrackingReliability> reliability{[this] {
    return std::make_shared<LocationTrackingReliability>(platform.main, platform.queues, platform.clock,
                                                         platform.random, platform.store, log.logger());
  }};
  Lazy<APIService> api{[this] {
    return std::make_shared<APIService>(platform, BaseUrls::builtIn(), log.logger(), reliability);
  }};
  ForegroundGeofenceMonitor monitor{platform.main, fixes,
                                    ReactionServices{platform.clock, platform.store, platform.notifications,
                                                     platform.random, log.logger(), api, counter},
                                    reliability};
};

void walk(benchmark::State& state, const std::vector<Coordinate>& places, Walk& walk) {
  std::size_t next = 0;
  std::int64_t crossings = 0;
  const auto enters = walk.monitor.enterPublisher().subscribe([&](const Crossing&) { ++crossings; });
  const auto exits = walk.monitor.exitPublisher().subscribe([&](const Crossing&) { ++crossings; });
  for (auto _ : state) {
    walk.fixes.manager->deliver({places[next], 10.0, {}});
    next = (next + 1) % places.size();
    walk.log.drain();
    if (next % 64 != 0) continue;
    state.PauseTiming();
    walk.world.runFor(std::chrono::seconds(2));
    state.ResumeTiming();
  }
  state.counters["crossings per fix"] =
      benchmark::Counter(static_cast<double>(crossings), benchmark::Counter::kAvgIterations);
}

/// Somebody stands about: nobody enters or leaves.
void fixWithoutCrossing(benchmark::State& state) {
  Walk standing(static_cast<std::size_t>(state.range(0)));
  walk(state, standing.town.walk(1), standing);
}

/// Each fix lies somewhere else in town: about two crossings each.
void fixWithCrossings(benchmark::State& state) {
  Walk jumping(static_cast<std::size_t>(state.range(0)));
  walk(state, jumping.town.walk(), jumping);
}

BENCHMARK(fixWithoutCrossing)->Arg(20)->Arg(100)->Arg(1000);
BENCHMARK(fixWithCrossings)->Arg(20)->Arg(100)->Arg(1000);

}  // namespace
}  // namespace orlan
