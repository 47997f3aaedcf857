#include "orlan/geofence/NotificationPayload.hpp"

#include "orlan/geofence/activations.hpp"

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

json::Object forPush(const CampaignData::Campaign& campaign, const CampaignData::Notification& notification) {
  json::Object info{{"campaign_id", campaign.campaign.campaignId},
                    {"campaignId", campaign.campaign.campaignId},
                    {"location_id", campaign.location.locationId},
                    {"locationId", campaign.location.locationId},
                    {"n_id", notification.id},
                    {"id", notification.id},
                    {"activation", activations::push}};
  json::Object data{{"notification_id", std::to_string(notification.id)}};
  if (!notification.media.empty()) {
    const auto& media = notification.media.front();
    info.set("mediaType", media.type);
    info.set("mediaUrl", media.url);
    data.set("media_url", media.url);
    data.set("type", media.type);
  }
  if (!notification.cta.empty()) {
    const auto& cta = notification.cta.front();
    info.set("ctaLabel", cta.label);
    data.set("cta_label", cta.label);
    if (cta.url) {
      info.set("ctaUrl", *cta.url);
      data.set("cta_url", *cta.url);
    }
  }
  info.set("notification_data", std::move(data));
  return info;
}

}  // namespace orlan::notificationPayload
