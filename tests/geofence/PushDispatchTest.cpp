#include <gmock/gmock.h>

#include <limits>

#include "geofence/Campaigns.hpp"
#include "geofence/GeofenceHost.hpp"
#include "orlan/geofence/PushDelivery.hpp"
#include "orlan/geofence/PushDispatch.hpp"

namespace orlan::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

CampaignData::Notification pushed(std::int64_t id, std::string start = "S", std::string end = "E") {
  auto made = notification(id, "PUSH", "Push " + std::to_string(id));
  made.start = std::move(start);
  made.end = std::move(end);
  return made;
}

TEST(PushDelivery, TheKeyNamesCampaignNotificationAndTrimmedDates) {
  struct Row {
    const char* name;
    std::string start, end, expected;
  };
  const Row rows[] = {{"plain", "S", "E", "Orlan.PushDeliveredAt.v1.42.7.S.E"},
                      {"padded", " S", "E\r\n", "Orlan.PushDeliveredAt.v1.42.7.S.E"},
                      {"every white space and line break", "\u2028\u2029\u0085\u00A0\u3000\v\fS",
                       "E\u200A\u202F\u1680", "Orlan.PushDeliveredAt.v1.42.7.S.E"},
                      {"blanks inside", "a b", "c\nd", "Orlan.PushDeliveredAt.v1.42.7.a b.c\nd"},
                      {"empty", "", " \t", "Orlan.PushDeliveredAt.v1.42.7.."}};
  for (const Row& row : rows) {
    EXPECT_EQ(pushDelivery::deliveryKey(42, pushed(7, row.start, row.end)), row.expected) << row.name;
  }
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
      {"negative", -1.0, false},
      {"just now", at(now), true},
      {"a microsecond short of a day", at(now - 24h + 1us), true},
      {"a day", at(now - 24h), false},
      {"a day, to the microsecond", at(now - 24h - 1us), false},
      {"in the future", at(now + 24h), true},
      {"no number", std::numeric_limits<double>::quiet_NaN(), false},
      {"beyond all times", 1e300, true},
  };
  for (const Row& row : rows) EXPECT_EQ(pushDelivery::isRecent(row.last, now), row.expected) << row.name;
}

class PushDispatchTest : public testing::Test {
 protected:
  std::vector<std::string> dispatch(std::vector<CampaignData::Campaign> campaigns) {
    push_->dispatch({std::move(campaigns)});
    return host_.seen();
  }

  GeofenceHost host_;
  std::unique_ptr<PushDispatch> push_ =
      std::make_unique<PushDispatch>(host_.platform, host_.logger, host_.api);
};

TEST_F(PushDispatchTest, WithoutAnythingToPush) {
  EXPECT_THAT(dispatch({}), ElementsAre("• 🔕 No PUSH campaigns in latest /check-geofence payload"));
  EXPECT_THAT(dispatch({campaign(1, 10, {notification(1, "ON_ENTER", "In")}), campaign(2, 20)}), SizeIs(1));
  EXPECT_EQ(host_.api.ifBuilt(), nullptr);
}

TEST_F(PushDispatchTest, SchedulesAndRemembers) {
  host_.world.runFor(500ms);
  const std::vector both{campaign(42, 0, {pushed(7), notification(1, "ON_ENTER", "In"), pushed(8)}),
                         campaign(43, 5, {notification(9, "push", "Any case")}), campaign(44, 6)};
  EXPECT_THAT(
      dispatch(both),
      ElementsAre("INFO 🔔 Processing 2 PUSH campaign(s)",
                  "report notification_delivered as notification of 7 at 0 (-1.0,-1.0)", "scheduled Push 7",
                  "report notification_delivered as notification of 8 at 0 (-1.0,-1.0)", "scheduled Push 8",
                  "report notification_delivered as notification of 9 at 5 (-1.0,-1.0)", "scheduled Any case",
                  "INFO ✅ PUSH dispatch queued – scheduled 3, skipped 0",
                  "store Orlan.PushDeliveredAt.v1.42.7.S.E = 1767225600.5",
                  "• ✅ PUSH scheduled campaign=42 notif=7 location=0",
                  "store Orlan.PushDeliveredAt.v1.42.8.S.E = 1767225600.5",
                  "• ✅ PUSH scheduled campaign=42 notif=8 location=0",
                  "store Orlan.PushDeliveredAt.v1.43.9.. = 1767225600.5",
                  "• ✅ PUSH scheduled campaign=43 notif=9 location=5"));
  EXPECT_NE(host_.phone.store().get("Orlan.PushDeliveredAt.v1.42.7.S.E")->real(), nullptr);

  host_.world.runFor(24h - 1us);
  (void)host_.seen();
  EXPECT_THAT(dispatch(both), ElementsAre("INFO 🔔 Processing 2 PUSH campaign(s)",
                                          "• ⏭️ Skipping duplicate PUSH campaign=42 notif=7",
                                          "• ⏭️ Skipping duplicate PUSH campaign=42 notif=8",
                                          "• ⏭️ Skipping duplicate PUSH campaign=43 notif=9",
                                          "INFO ✅ PUSH dispatch queued – scheduled 0, skipped 3"));
  host_.world.runFor(1us);
  EXPECT_THAT(dispatch(both), testing::Contains("INFO ✅ PUSH dispatch queued – scheduled 3, skipped 0"));
}

TEST_F(PushDispatchTest, TheSameTwiceInOneAnswerIsSkippedSilently) {
  EXPECT_THAT(
      dispatch({campaign(42, 0, {pushed(7), pushed(7, " S", "E\n"), pushed(7, "S", "F")})}),
      ElementsAre("INFO 🔔 Processing 1 PUSH campaign(s)",
                  "report notification_delivered as notification of 7 at 0 (-1.0,-1.0)", "scheduled Push 7",
                  "report notification_delivered as notification of 7 at 0 (-1.0,-1.0)", "scheduled Push 7",
                  "INFO ✅ PUSH dispatch queued – scheduled 2, skipped 1",
                  "store Orlan.PushDeliveredAt.v1.42.7.S.E = 1767225600.0",
                  "• ✅ PUSH scheduled campaign=42 notif=7 location=0",
                  "store Orlan.PushDeliveredAt.v1.42.7.S.F = 1767225600.0",
                  "• ✅ PUSH scheduled campaign=42 notif=7 location=0"));
}

TEST_F(PushDispatchTest, WhatTheCentreRefusesIsTriedAgain) {
  host_.phone.notifications().setRefusal(Error{"Centre", 1, "not allowed"});
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_THAT(dispatch({campaign(42, 0, {pushed(7)})}),
                ElementsAre("INFO 🔔 Processing 1 PUSH campaign(s)",
                            "report notification_delivered as notification of 7 at 0 (-1.0,-1.0)",
                            "INFO ✅ PUSH dispatch queued – scheduled 1, skipped 0",
                            "ERROR ❌ Failed to schedule PUSH notification id=7: not allowed"));
  }
}

TEST_F(PushDispatchTest, ASecondDispatchBeforeTheCentreAnsweredSchedulesAgain) {
  push_->dispatch({{campaign(42, 0, {pushed(7)})}});
  EXPECT_THAT(dispatch({campaign(42, 0, {pushed(7)})}),
              testing::Contains("INFO ✅ PUSH dispatch queued – scheduled 1, skipped 0").Times(2));
  EXPECT_THAT(host_.phone.scheduled(), SizeIs(2));
  EXPECT_THAT(dispatch({campaign(42, 0, {pushed(7)})}),
              testing::Contains("INFO ✅ PUSH dispatch queued – scheduled 0, skipped 1"));
}

TEST_F(PushDispatchTest, RequestsAreNamedAfterTheirDelivery) {
  (void)dispatch({campaign(42, 0, {pushed(7), pushed(8)})});
  ASSERT_THAT(host_.phone.scheduled(), SizeIs(2));
  const auto& first = host_.phone.scheduled()[0];
  EXPECT_THAT(first.identifier, MatchesRegex("orlan-push-[0-9]+"));
  EXPECT_NE(first.identifier, host_.phone.scheduled()[1].identifier);
  EXPECT_EQ(first.identifier, pushDelivery::requestIdentifier("Orlan.PushDeliveredAt.v1.42.7.S.E"));
  EXPECT_EQ(first.delay, 1s);
  EXPECT_EQ(first.content.body, "About Push 7");
  EXPECT_TRUE(first.content.defaultSound);
  EXPECT_EQ(*first.content.userInfo.find("activation"), json::Value("PUSH"));
}

TEST_F(PushDispatchTest, AnAnswerAfterItsEndIsForgotten) {
  push_->dispatch({{campaign(42, 0, {pushed(7)})}});
  push_.reset();
  (void)host_.transcript.take();
  EXPECT_THAT(host_.seen(), IsEmpty());
}

}  // namespace
}  // namespace orlan::test
