#include "orlan/backend/Activity.hpp"

namespace orlan {

std::string_view wireName(ActivityType activity) {
  switch (activity) {
    case ActivityType::ctaEngagement:
      return "cta_engagement";
    case ActivityType::notificationSent:
      return "notification_sent";
    case ActivityType::notificationDelivered:
      return "notification_delivered";
    case ActivityType::mediaViewed:
      return "media_viewed";
    case ActivityType::location_update:
      return "location_update";
    case ActivityType::geofence_exit:
      return "geofence_exit";
    case ActivityType::geofence_entry:
      return "geofence_entry";
  }
  return {};
}

std::string_view wireName(NotificationType type) {
  switch (type) {
    case NotificationType::notification:
      return "notification";
    case NotificationType::location:
      return "location";
    case NotificationType::geofence:
      return "geofence";
  }
  return {};
}

}  // namespace orlan
