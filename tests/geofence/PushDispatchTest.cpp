#include <gmock/gmock.h>

#include <limits>

#include "geofence/Campaigns.hpp"
#include "orlan/geofence/PushDelivery.hpp"
#include "orlan/geofence/PushDispatch.hpp"
#include "support/FloorHost.hpp"

namespace orlan::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

CampaignData::Notification pushed(std::int64_t id, std::string start = "S", std::string end = "E") {
  auto made = notification(id, "PUSH", "Push " + std::to_string(id));
  made.start = std::move(start);
  made.end = std::move(end);
  return made;
}

TEST(PushDelivery, TheKeyNamesCampaignNotificationAndTrimmedDates) {
  EXPECT_EQ(pushDelivery::deliveryKey(42, pushed(7, " a b", "c\nd\u2028\r\n")),
            "Orlan.PushDeliveredAt.v1.42.7.a b.c\nd");
  EXPECT_EQ(pushDelivery::deliveryKey(42, pushed(7, "", " \t")), "Orlan.PushDeliveredAt.v1.42.7..");
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

TEST_F(PushDispatchTest, SchedulesOnceADayWhatIsToBePushed) {
  EXPECT_THAT(dispatch({campaign(1, 10, {notification(1, "ON_ENTER", "In")}), campaign(2, 20)}),
              ElementsAre("• 🔕 No PUSH campaigns in latest /check-geofence payload"));
  const std::vector both{
      campaign(42, 0,
               {pushed(7), notification(1, "ON_ENTER", "In"), pushed(7, " S", "E\n"), pushed(7, "S", "F")}),
      campaign(43, 5, {notification(9, "push", "Any case")}), campaign(44, 6)};
  EXPECT_THAT(
      dispatch(both),
      ElementsAre("INFO 🔔 Processing 2 PUSH campaign(s)",
                  "report notification_delivered as notification of 7 at 0 (-1.0,-1.0)", "scheduled Push 7",
                  "report notification_delivered as notification of 7 at 0 (-1.0,-1.0)", "scheduled Push 7",
                  "report notification_delivered as notification of 9 at 5 (-1.0,-1.0)", "scheduled Any case",
                  "INFO ✅ PUSH dispatch queued – scheduled 3, skipped 1",
                  "store Orlan.PushDeliveredAt.v1.42.7.S.E = 1767225600.0",
                  "• ✅ PUSH scheduled campaign=42 notif=7 location=0",
                  "store Orlan.PushDeliveredAt.v1.42.7.S.F = 1767225600.0",
                  "• ✅ PUSH scheduled campaign=42 notif=7 location=0",
                  "store Orlan.PushDeliveredAt.v1.43.9.. = 1767225600.0",
                  "• ✅ PUSH scheduled campaign=43 notif=9 location=5"));
  (void)host_.seenAfter(24h - 1us);
  EXPECT_THAT(dispatch(both), ElementsAre("INFO 🔔 Processing 2 PUSH campaign(s)",
                                          "• ⏭️ Skipping duplicate PUSH campaign=42 notif=7",
                                          "• ⏭️ Skipping duplicate PUSH campaign=42 notif=7",
                                          "• ⏭️ Skipping duplicate PUSH campaign=43 notif=9",
                                          "INFO ✅ PUSH dispatch queued – scheduled 0, skipped 4"));
  (void)host_.seenAfter(1us);
  EXPECT_THAT(dispatch(both), Contains("INFO ✅ PUSH dispatch queued – scheduled 3, skipped 1"));
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
