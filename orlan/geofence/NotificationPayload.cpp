#include "orlan/geofence/NotificationPayload.hpp"

namespace orlan::notificationPayload {

NotificationContent content(const CampaignData::Notification& notification) {
  NotificationContent content;
  content.title = notification.headline;
  content.body = notification.body;
  content.defaultSound = true;
  return content;
}

json::Object forCrossing(const CampaignData::Campaign& campaign,
                         const CampaignData::Notification& notification) {
  const auto* media = notification.media.empty() ? nullptr : &notification.media.front();
  const auto* cta = notification.cta.empty() ? nullptr : &notification.cta.front();
  return {
      {"campaign_id", campaign.campaign.campaignId},
      {"location_id", campaign.location.locationId},
      {"n_id", notification.id},
      {"mediaType", media ? json::Value(media->type) : json::Value()},
      {"mediaUrl", media ? json::Value(media->url) : json::Value()},
      {"ctaLabel", cta ? json::Value(cta->label) : json::Value()},
      {"ctaUrl", cta ? json::Value(cta->url) : json::Value()},
  };
}

}  // namespace orlan::notificationPayload
