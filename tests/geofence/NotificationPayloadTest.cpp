#include <gtest/gtest.h>

#include "geofence/Campaigns.hpp"
#include "orlan/geofence/NotificationPayload.hpp"

namespace orlan::test {
namespace {

TEST(NotificationPayload, CarriesTheFirstMediaAndCallToAction) {
  using Media = CampaignData::MediaDetail;
  using CTA = CampaignData::CTADetail;
  struct Row {
    const char* name;
    std::vector<Media> media;
    std::vector<CTA> cta;
    json::Object expected;
  };
  const Row rows[] = {
      {"nothing", {}, {}, {{"mediaType", {}}, {"mediaUrl", {}}, {"ctaLabel", {}}, {"ctaUrl", {}}}},
      {"both, and more",
       {{"image", "https://m.example/1", "a"}, {"video", "https://m.example/2", "b"}},
       {{"https://c.example/1", "Open", "c"}, {"https://c.example/2", "Later", "d"}},
       {{"mediaType", "image"},
        {"mediaUrl", "https://m.example/1"},
        {"ctaLabel", "Open"},
        {"ctaUrl", "https://c.example/1"}}},
      {"a call to nowhere",
       {},
       {{std::nullopt, "Open", "c"}},
       {{"mediaType", {}}, {"mediaUrl", {}}, {"ctaLabel", "Open"}, {"ctaUrl", {}}}},
  };
  for (const Row& row : rows) {
    auto posted = notification(5, "ON_ENTER", "Hello");
    posted.media = row.media;
    posted.cta = row.cta;
    json::Object expected{{"campaign_id", 42}, {"location_id", 7}, {"n_id", 5}};
    for (const auto& [key, value] : row.expected) expected.set(key, value);
    EXPECT_EQ(notificationPayload::forCrossing(campaign(42, 7), posted), expected) << row.name;
  }
}

TEST(NotificationPayload, OfAPushLeavesOutWhatIsAbsent) {
  auto posted = notification(5, "push", "Hello");
  const json::Object ids{{"campaign_id", 42}, {"campaignId", 42}, {"location_id", 0},    {"locationId", 0},
                         {"n_id", 5},         {"id", 5},          {"activation", "PUSH"}};
  auto expected = ids;
  expected.set("notification_data", json::Object{{"notification_id", "5"}});
  EXPECT_EQ(notificationPayload::forPush(campaign(42, 0), posted), expected);

  posted.media = {{"image", "https://m.example/1", "a"}, {"video", "https://m.example/2", "b"}};
  posted.cta = {{std::nullopt, "Open", "c"}};
  expected = ids;
  expected.set("mediaType", "image");
  expected.set("mediaUrl", "https://m.example/1");
  expected.set("ctaLabel", "Open");
  expected.set("notification_data", json::Object{{"notification_id", "5"},
                                                 {"media_url", "https://m.example/1"},
                                                 {"type", "image"},
                                                 {"cta_label", "Open"}});
  EXPECT_EQ(notificationPayload::forPush(campaign(42, 0), posted), expected);

  posted.media.clear();
  posted.cta.front().url = "https://c.example/1";
  expected = ids;
  expected.set("ctaLabel", "Open");
  expected.set("ctaUrl", "https://c.example/1");
  expected.set(
      "notification_data",
      json::Object{{"notification_id", "5"}, {"cta_label", "Open"}, {"cta_url", "https://c.example/1"}});
  EXPECT_EQ(notificationPayload::forPush(campaign(42, 0), posted), expected);
}

}  // namespace
}  // namespace orlan::test
