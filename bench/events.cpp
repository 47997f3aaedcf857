// Crossings one after the other, each with two events whose attempts are drawn at random: one event in eight
// is given up and kept for good.
#include "bench/MuteLog.hpp"
#include "bench/Timing.hpp"
#include "bench/rows.hpp"
#include "orlan/campaigns/LocationTrackingReliability.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan::bench {
namespace {

json::Object entry(std::int64_t i) {
  return {{"campaign_id", 1000 + i},
          {"location_id", 1000 + i},
          {"confidence", 0.95},
          {"detection_method", "polygon_high_confidence"},
          {"timestamp", 1767225600.5 + static_cast<double>(i)}};
}

json::Object activity(std::int64_t i) {
  return {{"device_registered_id", "65f0c0ffee65f0c0ffee65f0"},
          {"curated_notification_id", std::to_string(i)},
          {"location_id", std::to_string(1000 + i)},
          {"type", "GEOFENCE"},
          {"activity", "ENTER"},
          {"time", "2026-01-01T00:00:00.000+00:00"},
          {"latitude", "51.0630512"},
          {"longitude", "-1.3141203"}};
}

void crossings(std::int64_t count) {
  sim::World world;
  sim::SimulatedPhone phone(world);
  MuteLog log;
  const Platform platform = phone.platform();
  LocationTrackingReliability reliability(platform.main, platform.queues, platform.clock, platform.random,
                                          platform.store, log.logger());
  for (std::int64_t i = 0; i < count; ++i) {
    for (const auto& [type, data] : {std::pair{"geofence_entry", entry(i)}, {"geo_activity", activity(i)}}) {
      reliability.addPendingEvent(type, data, LocationTrackingReliability::EventPriority::high);
    }
    world.runFor(std::chrono::seconds(20));
  }
}

}  // namespace

void events(Table& table) {
  Row& row = table.emplace_back(
      Row{"Two events a crossing, one in eight failing for good", "crossings", Unit::nanoseconds, {}});
  for (const std::int64_t count : {500, 2'000, 8'000}) {
    row.measure(static_cast<double>(count),
                {{"ours", [count] { return nanoseconds([count] { crossings(count); }); }}});
  }
}

}  // namespace orlan::bench
