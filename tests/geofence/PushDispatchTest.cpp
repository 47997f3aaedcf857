#include <gmock/gmock.h>

#include <limits>

#include "geofence/Campaigns.hpp"
#include "orlan/geofence/NotificationPayload.hpp"
#include "orlan/geofence/PushDelivery.hpp"
#include "orlan/geofence/PushDispatch.hpp"
#include "support/FloorHost.hpp"

namespace orlan::test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

CampaignData::Notification pushed(std::int64_t id, std::string start = "S", std::string end = "E") {
  auto made = notification(id, "PUSH", "Push " + std::to_string(id));
  made.start = std::move(start);
  made.end = std::move(end);
  return made;
}

TEST(PushDelivery, LastsForADay) {
  constexpr TimePoint now = std::chrono::sys_days(std::chrono::January / 2 / 2026);
  const auto at = [](TimePoint time) { return secondsSince1970(time); };
  struct Row {
    const char* name;
    std::optional<double> last;
    bool expected;
  };
  const Row rows[] = {
      {"never", {}, false},
      {"zero", 0.0, false},
      {"a microsecond short of a day", at(now - 24h + 1us), true},
      {"a day", at(now - 24h), false},
      {"in the future", at(now + 24h), true},
      {"no number", std::numeric_limits<double>::quiet_NaN(), false},
      {"beyond all times", 1e300, true},
  };
  for (const Row& row : rows) EXPECT_EQ(pushDelivery::isRecent(row.last, now), row.expected) << row.name;
  EXPECT_FALSE(pushDelivery::isRecent(0.0, TimePoint())) << "zero is no time, whatever the clock says";
}

class PushDispatchTest : public testing::Test {
 protected:
  Lines dispatch(std::vector<CampaignData::Campaign> campaigns) {
    push_->dispatch({std::move(campaigns)});
    return host_.seen();
  }

  FloorHost host_;
  std::unique_ptr<PushDispatch> push_ =
      std::make_unique<PushDispatch>(host_.platform, host_.logger, host_.api);
};

TEST_F(PushDispatchTest, SchedulesOnceWhatComesTwiceAndPushesInAnyCase) {
  const auto seen = dispatch(
      {campaign(42, 0,
                {pushed(7), notification(1, "ON_ENTER", "In"), pushed(7, " S", "E\n"), pushed(7, "S", "F")}),
       campaign(43, 5, {notification(9, "push", "Any case")}), campaign(44, 6)});
  EXPECT_THAT(seen, Contains("INFO 🔔 Processing 2 PUSH campaign(s)"));
  EXPECT_THAT(seen, Contains("scheduled Push 7").Times(2));
  EXPECT_THAT(seen, Contains("scheduled Any case"));
  EXPECT_THAT(seen, Contains("INFO ✅ PUSH dispatch queued – scheduled 3, skipped 1"));
  EXPECT_THAT(seen, Not(Contains(HasSubstr("duplicate"))));
}

TEST(NotificationPayload, HasTheFirstMediaAndACallToActionThatLeadsNowhere) {
  auto posted = pushed(5);
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

TEST_F(PushDispatchTest, WhatTheCentreRefusedOrHasNotAnsweredIsScheduledAgain) {
  host_.phone.notifications().setRefusal(Error{"Centre", 1, "not allowed"});
  EXPECT_THAT(dispatch({campaign(42, 0, {pushed(7)})}),
              Contains("ERROR ❌ Failed to schedule PUSH notification id=7: not allowed"));
  host_.phone.notifications().setRefusal(std::nullopt);
  push_->dispatch({{campaign(42, 0, {pushed(7)})}});
  EXPECT_THAT(dispatch({campaign(42, 0, {pushed(7)})}),
              Contains("INFO ✅ PUSH dispatch queued – scheduled 1, skipped 0").Times(2));
  EXPECT_THAT(dispatch({campaign(42, 0, {pushed(7), pushed(8)})}),
              Contains("INFO ✅ PUSH dispatch queued – scheduled 1, skipped 1"));
  EXPECT_EQ(host_.phone.scheduled().front().identifier,
            pushDelivery::requestIdentifier("Orlan.PushDeliveredAt.v1.42.7.S.E"));
  EXPECT_NE(host_.phone.scheduled().front().identifier, host_.phone.scheduled().back().identifier);
}

TEST_F(PushDispatchTest, AnAnswerAfterItsEndIsForgotten) {
  push_->dispatch({{campaign(42, 0, {pushed(7)})}});
  push_.reset();
  (void)host_.transcript.take();
  EXPECT_THAT(host_.seen(), IsEmpty());
}

}  // namespace
}  // namespace orlan::test
