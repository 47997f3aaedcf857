#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "orlan/base/Enumeration.hpp"

namespace orlan {

/// What the user experienced.
enum class ActivityType {
  ctaEngagement,
  notificationSent,
  notificationDelivered,
  mediaViewed,
  location_update,
  geofence_exit,
  geofence_entry
};

template <>
struct RawValues<ActivityType> {
  static constexpr std::array table{std::pair{ActivityType::ctaEngagement, std::int64_t{0}},
                                    std::pair{ActivityType::notificationSent, std::int64_t{1}},
                                    std::pair{ActivityType::notificationDelivered, std::int64_t{2}},
                                    std::pair{ActivityType::mediaViewed, std::int64_t{3}},
                                    std::pair{ActivityType::location_update, std::int64_t{4}},
                                    std::pair{ActivityType::geofence_exit, std::int64_t{5}},
                                    std::pair{ActivityType::geofence_entry, std::int64_t{6}}};
};

/// The kind of notification or trigger that a report belongs to.
enum class NotificationType { notification, location, geofence };

template <>
struct RawValues<NotificationType> {
  static constexpr std::array table{std::pair{NotificationType::notification, std::int64_t{0}},
                                    std::pair{NotificationType::location, std::int64_t{1}},
                                    std::pair{NotificationType::geofence, std::int64_t{2}}};
};

/// "cta_engagement", "geofence_entry", …: the text on the wire.
[[nodiscard]] std::string_view wireName(ActivityType activity);
[[nodiscard]] std::string_view wireName(NotificationType type);

}  // namespace orlan
