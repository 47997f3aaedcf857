#include "orlan/geofence/CampaignPoster.hpp"

#include <fmt/format.h>

#include "orlan/base/text.hpp"
#include "orlan/geofence/NotificationPayload.hpp"

namespace orlan {

void CampaignPoster::post(const CampaignData::Campaign& campaign, std::string_view activation) {
  services_.logger.breadcrumb(fmt::format("{}sendLocalNotifications - activation: {}, campaign: {}",
                                          style_.posting, activation, campaign.campaign.campaignId));
  for (const auto& notification : campaign.outsideNotificationsArray) {
    if (text::upper(notification.activation) == activation) postOne(campaign, notification);
  }
}

void CampaignPoster::postOne(const CampaignData::Campaign& campaign,
                             const CampaignData::Notification& notification) {
  const auto report = [&] {
    services_.api->reportActivity(ActivityType::notificationDelivered, campaign.location.locationId,
                                  notification.id, NotificationType::notification);
  };
  Logger& logger = services_.logger;
  logger.breadcrumb(fmt::format("{}Creating notification - id: {}, headline: {}", style_.posting,
                                notification.id, notification.headline));
  auto content = notificationPayload::content(notification);
  if (style_.reportsBeforePayload) report();
  content.userInfo = notificationPayload::forCrossing(campaign, notification);
  logger.breadcrumb(
      fmt::format("{}Notification userInfo: {}", style_.posting, json::describe(content.userInfo)));
  if (!style_.reportsBeforePayload) report();
  schedule(std::move(content));
}

void CampaignPoster::schedule(NotificationContent content) {
  NotificationRequest request{randomUuid(services_.random), std::move(content), std::chrono::seconds(1)};
  services_.notifications.add(std::move(request), [this, pass = gate_.pass()](const Result<void>& outcome) {
    pass([this, outcome] { noteOutcome(outcome); });
  });
}

void CampaignPoster::noteOutcome(const Result<void>& outcome) {
  if (outcome) {
    services_.logger.breadcrumb(fmt::format("{}Notification scheduled successfully", style_.posting));
  } else {
    services_.logger.error(fmt::format("{}{}", style_.refused, outcome.error().description));
  }
}

}  // namespace orlan
