#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "orlan/base/Subject.hpp"
#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/geofence/Crossing.hpp"
#include "orlan/geofence/PolygonSink.hpp"
#include "orlan/geofence/ReactionServices.hpp"
#include "orlan/platform/Circle.hpp"
#include "orlan/platform/LocationManager.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// Hears the entries and exits to which the background monitor reacts, before anything is posted. A host
/// overrides what it wants. Main thread.
class BackgroundGeofenceDelegate {
 public:
  virtual ~BackgroundGeofenceDelegate() = default;
  /// The operating system saw the phone enter the area of this campaign at this location.
  virtual void didEnterRegion(std::int64_t /*campaignID*/, std::int64_t /*locationID*/) {}
  /// It saw it leave; only after an entry.
  virtual void didExitRegion(std::int64_t /*campaignID*/, std::int64_t /*locationID*/) {}
};

/// Lets the operating system watch at most 20 circles around the campaigns' polygons, and reacts to their
/// entries and exits while the application is not in front. Main thread.
class BackgroundRegionMonitor : public PolygonSink {
 public:
  BackgroundRegionMonitor(MainLoop& main, LocationService& locations, const ReactionServices& services);
  ~BackgroundRegionMonitor() override;

  /// The installed library's, made at first use; lives until the library is uninstalled. Main thread.
  static BackgroundRegionMonitor& shared();

  /// Held weakly; null when nobody is set or is there any more.
  [[nodiscard]] std::shared_ptr<BackgroundGeofenceDelegate> delegate() const;
  void setDelegate(std::weak_ptr<BackgroundGeofenceDelegate> delegate);

  /// Every entry and every exit that is reacted to, just after the delegate has heard of it.
  [[nodiscard]] Publisher<Crossing>& enterPublisher();
  [[nodiscard]] Publisher<Crossing>& exitPublisher();

  /// The circles that are watched: the current list first; then, at each change of campaigns, the empty list
  /// and the growing one after each circle. Both names give the same stream.
  [[nodiscard]] Publisher<std::vector<Circle>>& circlesPublisher();
  [[nodiscard]] Publisher<std::vector<Circle>>& circlesPublisherPublic() { return circlesPublisher(); }

  /// Watches these campaigns' areas instead of the last ones, the nearest 20 of them. The same campaigns as
  /// last time change nothing, whatever their shapes. Who was inside a campaign that stays is still inside.
  ///
  /// A host's own regions. An operating system keeps one list of regions for the whole application, and each
  /// change of campaigns begins by ending all of them, whoever started them: at the first answer with
  /// campaigns after a launch, and whenever an answer brings others. Nobody is told, and those of a host are
  /// not started again. A host that needs regions starts them anew after each change (`circlesPublisher`
  /// shows it: the empty list, then the growing one), on a turn of the main loop of its own, and counts on no
  /// more of the 20 places than campaigns leave. Entries and exits of regions that are not a campaign's are
  /// ignored here.
  ///
  /// A process that is killed in the middle leaves fewer regions than it should; the first change after the
  /// next launch ends what is left and watches all anew, because nothing of the last set-up is remembered.
  void updateRegions(const std::vector<CampaignPolygon>& polygons);
  void takePolygons(const std::shared_ptr<const TrackedPolygons>& polygons) override;

  /// While paused the foreground monitor is in charge: crossings are lost to this one. Each does and logs
  /// nothing when nothing changes.
  void pauseMonitoring();
  void resumeMonitoring();

  /// Posts the campaign's notifications of that activation (upper case), without a cooldown of their own.
  void sendLocalNotifications(const CampaignData::Campaign& campaign, std::string_view activation);

  /// Whether a notification may be posted now. Only "ON_EXIT" has a cooldown: 900 s, shared by both monitors.
  bool shouldSendNotification(std::int64_t campaignId, std::string_view activation);

  /// Forgets all cooldowns, those of the foreground monitor too.
  void clearCooldown();

 private:
  struct Parts;
  std::shared_ptr<Parts> parts_;  // the location manager's delegate, which holds it weakly
};

}  // namespace orlan
