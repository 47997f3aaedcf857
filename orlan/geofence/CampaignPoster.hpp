#pragma once

#include <string_view>

#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/geofence/ReactionServices.hpp"
#include "orlan/geofence/ReactionStyle.hpp"
#include "orlan/platform/MainGate.hpp"

namespace orlan {

/// Posts a campaign's notifications and reports each as delivered. Main thread.
class CampaignPoster {
 public:
  CampaignPoster(MainLoop& main, const ReactionServices& services, const ReactionStyle& style)
      : services_(services), style_(style), gate_(main) {}

  /// One request, a second from now, and one report for each notification of that activation (upper case; the
  /// notifications' own may be in any). Whether the centre takes a request is only logged.
  void post(const CampaignData::Campaign& campaign, std::string_view activation);

 private:
  void postOne(const CampaignData::Campaign& campaign, const CampaignData::Notification& notification);
  void schedule(NotificationContent content);
  void noteOutcome(const Result<void>& outcome);

  const ReactionServices services_;
  const ReactionStyle& style_;
  MainGate gate_;
};

}  // namespace orlan
