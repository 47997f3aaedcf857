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

}  // namespace
}  // namespace orlan::test
