#pragma once

#include "orlan/base/json.hpp"
#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/platform/NotificationCenter.hpp"

/// What a campaign's notification becomes on the phone.
namespace orlan::notificationPayload {

/// Headline, body and the default sound; the user info is still to be set.
[[nodiscard]] NotificationContent content(const CampaignData::Notification& notification);

/// The user info of a notification that an entry or exit posts: campaign, location and notification id, the
/// first media entry and the first call to action. All seven keys are always there; what is absent is null.
[[nodiscard]] json::Object forCrossing(const CampaignData::Campaign& campaign,
                                       const CampaignData::Notification& notification);

/// The user info of a pushed notification: the ids under both their names, the same media and call to action
/// again under "notification_data", all as texts there. What is absent has no key.
[[nodiscard]] json::Object forPush(const CampaignData::Campaign& campaign,
                                   const CampaignData::Notification& notification);

}  // namespace orlan::notificationPayload
