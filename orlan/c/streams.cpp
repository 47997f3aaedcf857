#include "orlan/c/Streams.hpp"

#include <vector>

#include "orlan/c/Values.hpp"
#include "orlan/c/monitors.h"
#include "orlan/c/plugin.h"
#include "orlan/campaigns/CampaignFields.hpp"

namespace {

using namespace orlan::c;
using orlan::CampaignData;
using orlan::Crossing;
using orlan::Polygon;
using orlan::Publisher;

Publisher<Crossing>& crossings(std::int32_t kind) {
  auto& services = Host::services();
  switch (kind) {
    case ORLAN_FOREGROUND_ENTER:
      return services.foregroundMonitor->enterPublisher();
    case ORLAN_FOREGROUND_EXIT:
      return services.foregroundMonitor->exitPublisher();
    case ORLAN_BACKGROUND_ENTER:
      return services.backgroundMonitor->enterPublisher();
    case ORLAN_BACKGROUND_EXIT:
      return services.backgroundMonitor->exitPublisher();
    default:
      throw Misuse{ORLAN_INVALID_ARGUMENT, "there is no such kind of crossing"};
  }
}

void emitPolygons(orlan_polygons_handler handler, void* context, const std::vector<Polygon>& polygons) {
  std::vector<std::vector<orlan_coordinate>> rings;
  std::vector<orlan_polygon> out;
  rings.reserve(polygons.size());
  out.reserve(polygons.size());
  for (const Polygon& polygon : polygons) {
    auto& ring = rings.emplace_back();
    ring.reserve(polygon.pointCount());
    for (const auto& vertex : polygon.coordinates()) ring.push_back(to(vertex));
    out.push_back({ring.data(), ring.size()});
  }
  call(handler, context, out.data(), out.size());
}

}  // namespace

void orlan_subscription_free(orlan_subscription* subscription) {
  guarded(__func__, [&] {
    if (const auto host = installedHost()) assertMain(*host->phone);
    delete subscription;
  });
}

orlan_status orlan_subscribe_location_authorization(orlan_integer_handler handler, void* context,
                                                    orlan_subscription** subscription) {
  return subscribed<orlan::LocationAuthorization>(
      __func__, handler != nullptr, subscription,
      [] { return std::ref(orlan::OrlanPlugin::locationAuthorizationPublisher()); },
      [=](orlan::LocationAuthorization status) { call(handler, context, orlan::rawValue(status)); });
}

orlan_status orlan_subscribe_push_authorization(orlan_integer_handler handler, void* context,
                                                orlan_subscription** subscription) {
  return subscribed<orlan::NotificationAuthorization>(
      __func__, handler != nullptr, subscription,
      [] { return std::ref(orlan::OrlanPlugin::pushAuthorizationPublisher()); },
      [=](orlan::NotificationAuthorization status) { call(handler, context, orlan::rawValue(status)); });
}

orlan_status orlan_subscribe_last_location(orlan_location_handler handler, void* context,
                                           orlan_subscription** subscription) {
  return subscribed<std::optional<orlan::Location>>(
      __func__, handler != nullptr, subscription,
      [] { return std::ref(Host::services().locationPermission->lastLocationPublisher()); },
      [=](const std::optional<orlan::Location>& fix) {
        const orlan_location out = fix ? to(*fix) : orlan_location{};
        call(handler, context, fix ? &out : static_cast<const orlan_location*>(nullptr));
      });
}

orlan_status orlan_subscribe_polygons(orlan_polygons_handler handler, void* context,
                                      orlan_subscription** subscription) {
  return subscribed<std::vector<Polygon>>(
      __func__, handler != nullptr, subscription,
      [] { return std::ref(orlan::OrlanPlugin::polygonsPublisher()); },
      [=](const std::vector<Polygon>& polygons) { emitPolygons(handler, context, polygons); });
}

orlan_status orlan_subscribe_campaigns(orlan_text_handler handler, void* context,
                                       orlan_subscription** subscription) {
  using Current = std::shared_ptr<const CampaignData>;
  return subscribed<Current>(
      __func__, handler != nullptr, subscription,
      [] { return std::ref(Host::services().geofence->currentPublisher()); },
      [=](const Current& data) {
        const std::string json = data ? orlan::json::print(orlan::json::encode(*data)) : std::string();
        const orlan_string out = lent(json);
        call(handler, context, data ? &out : static_cast<const orlan_string*>(nullptr));
      });
}

orlan_status orlan_subscribe_crossings(int32_t kind, orlan_crossing_handler handler, void* context,
                                       orlan_subscription** subscription) {
  return subscribed<Crossing>(
      __func__, handler != nullptr, subscription, [kind] { return std::ref(crossings(kind)); },
      [=](const Crossing& crossing) {
        call(handler, context, orlan_crossing{crossing.first, crossing.second});
      });
}

orlan_status orlan_subscribe_circles(orlan_circles_handler handler, void* context,
                                     orlan_subscription** subscription) {
  return subscribed<std::vector<orlan::Circle>>(
      __func__, handler != nullptr, subscription,
      [] { return std::ref(Host::services().backgroundMonitor->circlesPublisher()); },
      [=](const std::vector<orlan::Circle>& circles) {
        std::vector<orlan_circle> out;
        out.reserve(circles.size());
        for (const auto& circle : circles) out.push_back(to(circle));
        call(handler, context, static_cast<const orlan_circle*>(out.data()), out.size());
      });
}
