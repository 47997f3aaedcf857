#include "orlan/notifications/testNotifications.hpp"

#include <chrono>
#include <utility>

namespace orlan::testNotifications {

json::Object basicPayload() {
  return {{"n_id", "999"},          {"location_id", "888"},
          {"mediaType", "image"},   {"mediaUrl", "https://placehold.co/400x300.png"},
          {"ctaLabel", "Test CTA"}, {"ctaUrl", "https://www.example.com"}};
}

json::Object pushStylePayload(TimePoint now) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(now.time_since_epoch()).count();
  json::Object payload = basicPayload();
  payload.set("gcm.message_id", "test-message-id-123");
  payload.set("google.c.a.e", "1");
  payload.set("google.c.a.c_id", "test-campaign-id");
  payload.set("google.c.a.ts", std::to_string(seconds));
  payload.set("custom_field", "custom_value");
  payload.set("another_field", "another_value");
  return payload;
}

NotificationRequest request(json::Object userInfo, RandomSource& random) {
  NotificationRequest request{"test-notification-manager-" + randomUuid(random), {}, std::chrono::seconds(1)};
  request.content.title = "Test Notification";
  request.content.body = "This is a test notification from NotificationManager";
  request.content.defaultSound = true;
  request.content.userInfo = std::move(userInfo);
  return request;
}

}  // namespace orlan::testNotifications
