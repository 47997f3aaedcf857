#include <gtest/gtest.h>

#include "geofence/Campaigns.hpp"
#include "orlan/geofence/NotificationPayload.hpp"

namespace orlan::test {
namespace {

TEST(NotificationPayload, CarriesTheFirstMediaAndCallToAction) {
  auto posted = notification(5, "PUSH", "Hello");
  posted.media = {{"image", "https://m.example/1", "a"}, {"video", "https://m.example/2", "b"}};
  posted.cta = {{std::nullopt, "Open", "c"}, {"https://c.example/2", "Later", "d"}};
  EXPECT_EQ(json::print(notificationPayload::forCrossing(campaign(42, 7), posted)),
            R"({"campaign_id":42,"location_id":7,"n_id":5,"mediaType":"image",)"
            R"("mediaUrl":"https://m.example/1","ctaLabel":"Open","ctaUrl":null})");
  EXPECT_EQ(json::print(notificationPayload::forPush(campaign(42, 7), posted)),
            R"({"campaign_id":42,"campaignId":42,"location_id":7,"locationId":7,"n_id":5,"id":5,)"
            R"("activation":"PUSH","mediaType":"image","mediaUrl":"https://m.example/1","ctaLabel":"Open",)"
            R"("notification_data":{"notification_id":"5","media_url":"https://m.example/1",)"
            R"("type":"image","cta_label":"Open"}})");
}

TEST(NotificationPayload, SaysNullOrNothingOfWhatIsAbsent) {
  const auto posted = notification(5, "PUSH", "Hello");
  EXPECT_EQ(json::print(notificationPayload::forCrossing(campaign(42, 7), posted)),
            R"({"campaign_id":42,"location_id":7,"n_id":5,"mediaType":null,"mediaUrl":null,)"
            R"("ctaLabel":null,"ctaUrl":null})");
  EXPECT_EQ(json::print(notificationPayload::forPush(campaign(42, 0), posted)),
            R"({"campaign_id":42,"campaignId":42,"location_id":0,"locationId":0,"n_id":5,"id":5,)"
            R"("activation":"PUSH","notification_data":{"notification_id":"5"}})");
}

}  // namespace
}  // namespace orlan::test
