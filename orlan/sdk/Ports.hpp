#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "orlan/base/Lazy.hpp"
#include "orlan/campaigns/CampaignSource.hpp"
#include "orlan/geofence/GeofenceService.hpp"
#include "orlan/geofence/NotificationCounter.hpp"
#include "orlan/geofence/PolygonSink.hpp"
#include "orlan/sdk/LocationPermissionManager.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"

/// What ties services that do not know each other. Each looks through a slot, so that nobody comes to life
/// before somebody means it.
namespace orlan {

class CounterPort final : public NotificationCounter {
 public:
  explicit CounterPort(Lazy<OrlanPlugin>& plugin) : plugin_(plugin) {}
  void recordFGNotification(std::string_view activation) override {
    plugin_->recordFGNotification(activation);
  }
  void recordBGNotification(std::string_view activation) override {
    plugin_->recordBGNotification(activation);
  }

 private:
  Lazy<OrlanPlugin>& plugin_;
};

/// For either monitor.
template <class Monitor>
class MonitorSink final : public PolygonSink {
 public:
  explicit MonitorSink(Lazy<Monitor>& monitor) : monitor_(monitor) {}
  void takePolygons(const std::shared_ptr<const TrackedPolygons>& polygons) override {
    monitor_->takePolygons(polygons);
  }

 private:
  Lazy<Monitor>& monitor_;
};

class CampaignLookup final : public CampaignSource {
 public:
  explicit CampaignLookup(Lazy<GeofenceService>& service) : service_(service) {}
  [[nodiscard]] std::shared_ptr<const CampaignData> current() override { return service_->current(); }

 private:
  Lazy<GeofenceService>& service_;
};

class LocationStream final : public Publisher<std::optional<Location>> {
 public:
  explicit LocationStream(Lazy<LocationPermissionManager>& manager) : manager_(manager) {}
  [[nodiscard]] Subscription subscribe(Handler handler) override {
    return manager_->lastLocationPublisher().subscribe(std::move(handler));
  }

 private:
  Lazy<LocationPermissionManager>& manager_;
};

}  // namespace orlan
