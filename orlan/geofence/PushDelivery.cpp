#include "orlan/geofence/PushDelivery.hpp"

#include <fmt/format.h>

#include <limits>

#include "orlan/base/text.hpp"
#include "orlan/geofence/activations.hpp"

namespace orlan::pushDelivery {
namespace {

/// FNV-1a, 64 bits.
std::uint64_t hash(std::string_view text) {
  std::uint64_t value = 14695981039346656037U;
  for (const char c : text) value = (value ^ static_cast<unsigned char>(c)) * 1099511628211U;
  return value;
}

}  // namespace

bool isPush(const CampaignData::Notification& notification) {
  return text::upper(notification.activation) == activations::push;
}

std::string deliveryKey(std::int64_t campaignId, const CampaignData::Notification& notification) {
  return fmt::format("{}.{}.{}.{}.{}", pushDeliveryKeyPrefix, campaignId, notification.id,
                     text::trimmed(notification.start), text::trimmed(notification.end));
}

bool isRecent(std::optional<double> last, TimePoint now) {
  if (!last || !(*last > 0.0)) return false;
  return elapsed(fromSecondsSince1970(*last), now) < pushDeliveryCooldown;
}

std::string requestIdentifier(std::string_view deliveryKey) {
  constexpr std::uint64_t positive = std::numeric_limits<std::int64_t>::max();
  return fmt::format("orlan-push-{}", hash(deliveryKey) & positive);
}

}  // namespace orlan::pushDelivery
