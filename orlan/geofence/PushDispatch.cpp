#include "orlan/geofence/PushDispatch.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "orlan/geofence/NotificationPayload.hpp"
#include "orlan/geofence/PushDelivery.hpp"

namespace orlan {
namespace {

std::size_t pushCampaigns(const CampaignData& data) {
  return static_cast<std::size_t>(std::count_if(
      data.campaignsArray.begin(), data.campaignsArray.end(), [](const CampaignData::Campaign& campaign) {
        const auto& all = campaign.outsideNotificationsArray;
        return std::any_of(all.begin(), all.end(), pushDelivery::isPush);
      }));
}

}  // namespace

PushDispatch::PushDispatch(const Platform& phone, Logger& logger, Lazy<APIService>& api)
    : clock_(phone.clock),
      store_(phone.store),
      notifications_(phone.notifications),
      logger_(logger),
      api_(api),
      gate_(phone.main) {}

void PushDispatch::dispatch(const CampaignData& data) {
  const std::size_t campaigns = pushCampaigns(data);
  if (campaigns == 0) {
    logger_.breadcrumb("🔕 No PUSH campaigns in latest /check-geofence payload");
    return;
  }
  const TimePoint now = clock_.now();
  logger_.log(fmt::format("🔔 Processing {} PUSH campaign(s)", campaigns));
  int scheduled = 0;
  int skipped = 0;
  std::unordered_set<std::string> seen;
  for (const Campaign& campaign : data.campaignsArray) {
    for (const Notification& notification : campaign.outsideNotificationsArray) {
      if (!pushDelivery::isPush(notification)) continue;
      const auto key = pushDelivery::deliveryKey(campaign.campaign.campaignId, notification);
      if (!seen.insert(key).second) {
        ++skipped;
      } else if (pushDelivery::isRecent(store_.number(key), now)) {
        ++skipped;
        logger_.breadcrumb(fmt::format("⏭️ Skipping duplicate PUSH campaign={} notif={}",
                                       campaign.campaign.campaignId, notification.id));
      } else {
        schedule(campaign, notification, key);
        ++scheduled;
      }
    }
  }
  logger_.log(fmt::format("✅ PUSH dispatch queued – scheduled {}, skipped {}", scheduled, skipped));
}

void PushDispatch::schedule(const Campaign& campaign, const Notification& notification,
                            const std::string& key) {
  auto content = notificationPayload::content(notification);
  content.userInfo = notificationPayload::forPush(campaign, notification);
  api_->reportActivity(ActivityType::notificationDelivered, campaign.location.locationId, notification.id,
                       NotificationType::notification);
  const auto noteOutcome = [this, key, campaignId = campaign.campaign.campaignId, id = notification.id,
                            locationId = campaign.location.locationId](const Result<void>& outcome) {
    if (!outcome) {
      logger_.error(
          fmt::format("❌ Failed to schedule PUSH notification id={}: {}", id, outcome.error().description));
      return;
    }
    store_.set(key, secondsSince1970(clock_.now()));
    logger_.breadcrumb(
        fmt::format("✅ PUSH scheduled campaign={} notif={} location={}", campaignId, id, locationId));
  };
  notifications_.add({pushDelivery::requestIdentifier(key), std::move(content), std::chrono::seconds(1)},
                     [pass = gate_.pass(), noteOutcome](const Result<void>& outcome) {
                       pass([noteOutcome, outcome] { noteOutcome(outcome); });
                     });
}

}  // namespace orlan
