#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "orlan/base/Lazy.hpp"
#include "orlan/base/Subject.hpp"
#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/campaigns/LocationTrackingReliability.hpp"
#include "orlan/geofence/Crossing.hpp"
#include "orlan/geofence/PolygonSink.hpp"
#include "orlan/geofence/ReactionServices.hpp"
#include "orlan/platform/LocationManager.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// Hears entries and exits that the foreground monitor recognised, before anything is posted. A host
/// overrides what it wants. Main thread.
class ForegroundGeofenceDelegate {
 public:
  virtual ~ForegroundGeofenceDelegate() = default;
  /// A fix is inside the area of this campaign at this location; the one before was not.
  virtual void didEnterCampaign(std::int64_t /*campaignID*/, std::int64_t /*locationID*/) {}
  /// A fix is outside; the one before was inside.
  virtual void didExitCampaign(std::int64_t /*campaignID*/, std::int64_t /*locationID*/) {}
};

/// Watches live fixes against the campaigns' polygons while the application is in front. Main thread.
class ForegroundGeofenceMonitor : public PolygonSink {
 public:
  ForegroundGeofenceMonitor(MainLoop& main, LocationService& locations, const ReactionServices& services,
                            Lazy<LocationTrackingReliability>& reliability);
  ~ForegroundGeofenceMonitor() override;

  /// The installed library's, made at first use; lives until the library is uninstalled. Main thread.
  static ForegroundGeofenceMonitor& shared();

  /// Held weakly; null when nobody is set or is there any more.
  [[nodiscard]] std::shared_ptr<ForegroundGeofenceDelegate> delegate() const;
  void setDelegate(std::weak_ptr<ForegroundGeofenceDelegate> delegate);

  /// Every entry and every exit, just after the delegate has heard of it.
  [[nodiscard]] Publisher<Crossing>& enterPublisher();
  [[nodiscard]] Publisher<Crossing>& exitPublisher();

  /// The location manager is not used: the monitor owns one.
  void start(const std::shared_ptr<LocationManager>& with);
  void stop();
  [[nodiscard]] bool isRunning() const;

  /// Replaces what is watched; who is inside what stays known.
  void updatePolygons(const std::vector<CampaignPolygon>& polygons);
  void takePolygons(const std::shared_ptr<const TrackedPolygons>& polygons) override;

  /// Posts the campaign's notifications of that activation (upper case), without a cooldown of their own.
  void sendLocalNotifications(const CampaignData::Campaign& campaign, std::string_view activation);

  /// Whether a notification may be posted now. Only "ON_EXIT" has a cooldown: 900 s, shared by both monitors.
  bool shouldSendNotification(std::int64_t campaignId, std::string_view activation);

  /// Forgets all cooldowns, those of the background monitor too.
  void clearCooldown();

 private:
  struct Parts;
  std::shared_ptr<Parts> parts_;  // the location manager's delegate, which holds it weakly
};

}  // namespace orlan
