#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "orlan/base/Time.hpp"
#include "orlan/campaigns/CampaignData.hpp"

/// When a pushed notification has been delivered, decided from values alone.
namespace orlan::pushDelivery {

inline constexpr std::string_view pushDeliveryKeyPrefix = "Orlan.PushDeliveredAt.v1";
inline constexpr Duration pushDeliveryCooldown = std::chrono::hours(24);

/// Whether the notification is one to be pushed: activation "PUSH" in any case.
[[nodiscard]] bool isPush(const CampaignData::Notification& notification);

/// Where the store keeps the time of a delivery: "Orlan.PushDeliveredAt.v1.42.7.START.END". New dates make it
/// another delivery.
[[nodiscard]] std::string deliveryKey(std::int64_t campaignId,
                                      const CampaignData::Notification& notification);

/// Whether a delivery at `last` (seconds since 1970, 0 or absent: never) makes another one at `now` too soon;
/// one in the future does.
[[nodiscard]] bool isRecent(std::optional<double> last, TimePoint now);

/// "orlan-push-" and a number that follows from the key, the same in every run.
[[nodiscard]] std::string requestIdentifier(std::string_view deliveryKey);

}  // namespace orlan::pushDelivery
