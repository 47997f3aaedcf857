#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "orlan/base/Subject.hpp"
#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/geofence/ExitDetection.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/LocationManager.hpp"

namespace orlan {

/// The circles that the operating system watches on behalf of the campaigns, and in which of them the user is
/// as far as known. Main thread.
class WatchedRegions {
 public:
  WatchedRegions(LocationManager& manager, ExitDetection& exitDetection, Logger& logger)
      : lm_(manager), exitDetection_(exitDetection), logger_(logger) {}

  /// Watches the nearest 20 of these in the place of all regions of the application, unless their campaigns
  /// are those of last time. Who is inside a campaign that stays among them stays inside. From the first time
  /// on, `delegate` hears of crossings.
  void update(const std::vector<CampaignPolygon>& polygons,
              const std::weak_ptr<LocationManagerDelegate>& delegate);

  /// The campaign of a watched region, or null.
  [[nodiscard]] const SharedCampaign* find(const std::string& identifier) const;

  [[nodiscard]] bool isInside(const std::string& identifier) const {
    return regionsCurrentlyInside_.contains(identifier);
  }
  [[nodiscard]] bool isInsideAny() const { return !regionsCurrentlyInside_.empty(); }
  void enter(const std::string& identifier) { regionsCurrentlyInside_.insert(identifier); }
  void leave(const std::string& identifier) { regionsCurrentlyInside_.erase(identifier); }

  /// As they are watched, in the order of registration; grows circle by circle during an update.
  [[nodiscard]] Publisher<std::vector<Circle>>& circlesPublisher() { return circlesSubject_; }

 private:
  [[nodiscard]] std::vector<std::int64_t> campaignsInside();
  [[nodiscard]] std::vector<CampaignPolygon> chosen(const std::vector<CampaignPolygon>& polygons);
  void watch(const CampaignPolygon& polygon, const std::vector<std::int64_t>& preserved, std::uint64_t round);
  void conclude(std::size_t offered, const std::weak_ptr<LocationManagerDelegate>& delegate);

  LocationManager& lm_;
  ExitDetection& exitDetection_;
  Logger& logger_;
  std::vector<Circle> circles_;
  CurrentValue<std::vector<Circle>> circlesSubject_;
  std::unordered_map<std::string, SharedCampaign> idMap_;
  std::set<std::string> regionsCurrentlyInside_;  // of what is watched no more only once an update is through
  std::vector<std::int64_t> lastCampaignIds_;     // ascending
  std::uint64_t round_ = 0;  // a subscriber of the circles may begin a new one in the middle of an update
};

}  // namespace orlan
