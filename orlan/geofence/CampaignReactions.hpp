#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "orlan/base/Subject.hpp"
#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/geofence/CampaignPoster.hpp"
#include "orlan/geofence/CooldownCheck.hpp"
#include "orlan/geofence/Crossing.hpp"
#include "orlan/geofence/ReactionHooks.hpp"
#include "orlan/geofence/ReactionServices.hpp"
#include "orlan/geofence/ReactionStyle.hpp"

namespace orlan {

/// What happens when somebody enters or leaves a campaign's area, the same for both monitors. Each monitor
/// has its own, with its own times; only the persisted cooldown is common. Main thread, inside a turn. The
/// campaign must stay alive during a call: delegates and subscribers may do anything with the monitor.
class CampaignReactions {
 public:
  CampaignReactions(MainLoop& main, const ReactionServices& services, const ReactionStyle& style);

  void entered(const CampaignData::Campaign& campaign, ReactionHooks& hooks);
  void exited(const CampaignData::Campaign& campaign, ReactionHooks& hooks);

  [[nodiscard]] Publisher<Crossing>& enterPublisher() { return enterSubject_; }
  [[nodiscard]] Publisher<Crossing>& exitPublisher() { return exitSubject_; }

  [[nodiscard]] CooldownCheck& cooldown() { return cooldown_; }
  [[nodiscard]] CampaignPoster& poster() { return poster_; }

 private:
  using Times = std::unordered_map<std::int64_t, TimePoint>;

  [[nodiscard]] std::string since(const Times& times, std::int64_t campaignId, TimePoint now,
                                  std::string_view words) const;
  void logCrossing(std::string_view opening, std::int64_t campaignId, TimePoint now, std::string_view note,
                   const ReactionHooks& hooks);
  void postAndCount(const CampaignData::Campaign& campaign, std::string_view activation);
  void reportGeo(ActivityType crossing, std::int64_t locationId, std::optional<Coordinate> position);

  const ReactionServices services_;
  const ReactionStyle& style_;
  CooldownCheck cooldown_;
  CampaignPoster poster_;
  Subject<Crossing> enterSubject_;
  Subject<Crossing> exitSubject_;
  Times entryTimestamps_;
  Times exitTimestamps_;
};

}  // namespace orlan
