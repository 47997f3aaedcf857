// One fix, from its arrival at the foreground monitor to the last of its log lines, where nobody enters or
// leaves. The literal build only detects. Writing the file is the log's own queue's work and not timed.
#include <memory>
#include <optional>

#include "bench/Literal.hpp"
#include "bench/MuteLog.hpp"
#include "bench/Timing.hpp"
#include "bench/Town.hpp"
#include "bench/rows.hpp"
#include "orlan/geofence/ForegroundGeofenceMonitor.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan::bench {
namespace {

struct NoCounter final : NotificationCounter {
  void recordFGNotification(std::string_view) override {}
  void recordBGNotification(std::string_view) override {}
};

/// The campaigns of a town's areas, each with something to say.
std::vector<CampaignData::Campaign> campaignsOf(const Town& town) {
  std::vector<CampaignData::Campaign> campaigns;
  for (const auto& area : town.areas) {
    const auto id = static_cast<std::int64_t>(1000 + campaigns.size());
    CampaignData::Campaign campaign{{"Area", id}, {id, {}}, {}};
    for (const Coordinate& vertex : area) {
      const auto position = static_cast<std::int64_t>(campaign.location.geofence.size());
      campaign.location.geofence.emplace_back(position, vertex.latitude, vertex.longitude);
    }
    for (const char* activation : {"ON_ENTER", "ON_EXIT"}) {
      CampaignData::Notification notification;
      notification.headline = "Good morning";
      notification.body = "A coffee on the house, two streets from here.";
      notification.activation = activation;
      campaign.outsideNotificationsArray.push_back(std::move(notification));
    }
    campaigns.push_back(std::move(campaign));
  }
  return campaigns;
}

/// The monitor on a phone of its own.
struct Walker {
  explicit Walker(const Town& town, const std::vector<CampaignData::Campaign>& campaigns) {
    std::vector<CampaignPolygon> polygons;
    for (std::size_t i = 0; i < campaigns.size(); ++i) {
      polygons.push_back({Polygon(town.areas[i]), campaigns[i]});
    }
    monitor.updatePolygons(polygons);
    monitor.start(nullptr);
  }

  void take(const Location& fix) {
    phone.locations().deliver({&fix, 1});
    log.drain();
  }

  sim::World world;
  sim::SimulatedPhone phone{world};
  Platform platform = phone.platform();
  MuteLog log;
  NoCounter counter;
  Lazy<LocationTrackingReliability> reliability{[this] {
    return std::make_shared<LocationTrackingReliability>(platform.main, platform.queues, platform.clock,
                                                         platform.random, platform.store, log.logger());
  }};
  Lazy<APIService> api{[this] {
    return std::make_shared<APIService>(platform, BaseUrls::builtIn(), log.logger(), reliability);
  }};
  ForegroundGeofenceMonitor monitor{platform.main, platform.locations,
                                    ReactionServices{platform.clock, platform.store, platform.notifications,
                                                     platform.random, log.logger(), api, counter},
                                    reliability};
};

void measure(Row& row, double size, Town town, double accuracy) {
  const auto campaigns = campaignsOf(town);
  Walker walker(town, campaigns);
  MuteLog log;
  // Far enough apart for the distance filter, near enough to stay inside what one of them is inside.
  const Coordinate here = town.walk(1).front();
  const Location fixes[] = {{here, accuracy, {}}, {{here.latitude + 0.0002, here.longitude}, accuracy, {}}};
  std::size_t next = 0;
  const auto ours = [&] {
    walker.take(fixes[next++ % 2]);
    walker.world.settle();  // the status of the fix, on its queue
  };
  const auto paper = [&] {
    keep(literal::detectGeofences(fixes[next++ % 2], campaigns, log.logger()));
    log.drain();
  };
  row.measure(size, {{"ours", [&] { return nanoseconds(ours); }},
                     {"literal build", [&] { return nanoseconds(paper); }}});
}

}  // namespace

void fix(Table& table) {
  for (const double accuracy : {10.0, 50.0}) {
    const std::string work = accuracy > 20.0 ? "One fix of 50 m accuracy" : "One fix of 10 m accuracy";
    Row& row = table.emplace_back(Row{work, "polygons", Unit::nanoseconds, {}});
    for (const std::size_t count : {20, 100, 1'000, 10'000}) {
      measure(row, static_cast<double>(count), Town(count), accuracy);
    }
  }
  Row& row = table.emplace_back(
      Row{"One fix of 50 m accuracy, 100 polygons of so many vertices", "vertices", Unit::nanoseconds, {}});
  for (const std::size_t vertices : {10, 100, 1'000, 10'000}) {
    measure(row, static_cast<double>(vertices), Town(100, vertices), 50.0);
  }
}

}  // namespace orlan::bench
