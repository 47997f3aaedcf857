// What a started library does for a host in C, operation by operation.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "c/TablesOverSimulated.hpp"

namespace {

using orlan::test::Ear;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr orlan_device device{sizeof device, {"00c0ffee-0000-4000-8000-00000000000a", 36}, {}, {}, {}, {}};

class Operations : public ::testing::Test {
 protected:
  void SetUp() override {
    host.phone.observe(host.seen);
    ASSERT_EQ(orlan_install(host.handle, nullptr), ORLAN_OK);
    host.phone.moveTo({51.49, -0.12});
    ASSERT_EQ(orlan_start_with_app_credentials(orlan_str("COMPANY"), orlan_str("APP"), orlan_str("APPKEY"),
                                               orlan_str(""), ORLAN_STAGING, nullptr, 0, true, nullptr),
              ORLAN_OK);
    host.pass();
  }

  /// What is to be seen outside after a call.
  void seen(const char* expected, orlan_status status) {
    EXPECT_EQ(status, ORLAN_OK) << orlan_last_problem();
    host.pass(std::chrono::seconds(2));
    EXPECT_THAT(host.seen.lines, Contains(HasSubstr(expected)));
    host.seen = {};
  }
  std::string textFrom(orlan_status (*get)(orlan_string*)) {
    orlan_string text{};
    EXPECT_EQ(get(&text), ORLAN_OK) << orlan_last_problem();
    const std::string found = orlan::test::copy(text);
    orlan_string_free(text);
    return found;
  }

  orlan::test::TablesOverSimulated host{[](orlan_phone_parts& parts) { parts.device = &device; }};
  Ear ear;
  std::vector<std::string>& heard = ear.heard;
};

TEST_F(Operations, EachIsSeenOutside) {
  const auto answers = orlan_str(R"([{"question_id":1,"type":"RATING","value":"4"},"no answer"])");
  const auto seven = orlan_str("7");
  const orlan_string tags[] = {orlan_str("north"), orlan_str("loud")};
  host.seen = {};
  seen("✅ Segments updated to: north, loud", orlan_update_segments(tags, 2, Ear::outcome, &ear));
  seen("/check-geofence", orlan_refetch_geofence());
  seen("APNs token forwarded to SDK", orlan_update_apns_token("\0\xff", 2));
  seen("🔥 FCM token forwarded to SDK", orlan_update_fcm_token(orlan_str("t")));
  seen("survey-response", orlan_submit_survey_response(seven, seven, answers, Ear::outcome, &ear));
  seen("survey-response", orlan_track_survey_event(seven, {}, orlan_str("shown"), Ear::outcome, &ear));
  seen("activities", orlan_track_cta_engagement(7, 8));
  seen("activities", orlan_track_media_view(7, 8));
  seen("activities", orlan_report_notification(ORLAN_ACTIVITY_GEOFENCE_EXIT, 7, 8, ORLAN_ABOUT_GEOFENCE));
  seen("notification ", orlan_send_test_notification());
  seen("notification ", orlan_send_test_notification_with_payload(orlan_str("{\"a\":1}")));
  seen("notification ", orlan_send_firebase_style_test_notification());
  seen("🔴 FG-Monitor stopped", orlan_foreground_stop());
  seen("🟢 FG-Monitor started (live GPS)", orlan_foreground_start());
  seen("▶️  BG-Monitor resumed (background mode)", orlan_background_resume());
  seen("⏸️  BG-Monitor paused (foreground mode)", orlan_background_pause());
  seen("🔔 Cleared all notification cooldowns", orlan_foreground_clear_cooldown());
  seen("🔔 BG Cleared all notification cooldowns", orlan_background_clear_cooldown());
  seen("📊 Recorded FG notification: ON_ENTER (Total: 1)",
       orlan_record_fg_notification(orlan_str("ON_ENTER")));
  seen("📊 Recorded BG notification: ON_EXIT (Total: 2)", orlan_record_bg_notification(orlan_str("ON_EXIT")));
  seen("mine", orlan_log(ORLAN_LOG_BREADCRUMB, orlan_str("mine")));
  EXPECT_THAT(heard, ElementsAre("done", "done", "done"));
  for (const auto& quiet :
       {orlan_clear_logs, orlan_clear_correlation_id, orlan_reset_notification_stats,
        orlan_clear_latest_notification, orlan_request_location_always, orlan_request_location_when_in_use}) {
    EXPECT_EQ(quiet(), ORLAN_OK);
  }
}

TEST_F(Operations, TheVendorsIdentifierGoesOutInUpperCase) {
  const std::string record = host.seen.requests.at(0).body.value_or("");
  EXPECT_THAT(record, HasSubstr("00C0FFEE-0000-4000-8000-00000000000A"));
  EXPECT_THAT(record, Not(HasSubstr("c0ffee")));
}

TEST_F(Operations, TheLatestNotificationCanBeTheHostsOwn) {
  const auto latest = [](void* self, const orlan_notification_details* details) {
    Ear::of(self).hear(details == nullptr
                           ? "none"
                           : std::string(details->headline.data) + " " + details->questions.data + " " +
                                 (details->cta_url.data == nullptr ? "-" : details->cta_url.data));
  };
  orlan_notification_details mine{};
  mine.struct_size = sizeof mine;
  mine.headline = orlan_str("Mine");
  mine.questions = orlan_str("[{\"id\":1,\"question\":\"?\",\"has_choices\":false,\"position\":0}]");
  EXPECT_EQ(orlan_set_latest_notification(&mine), ORLAN_OK) << orlan_last_problem();
  EXPECT_EQ(orlan_latest_notification(latest, &ear), ORLAN_OK);
  mine.questions = orlan_str("[1]");
  EXPECT_EQ(orlan_set_latest_notification(&mine), ORLAN_INVALID_ARGUMENT);
  EXPECT_THAT(orlan_last_problem(), HasSubstr("questions: "));
  EXPECT_EQ(orlan_set_latest_notification(nullptr), ORLAN_OK);
  EXPECT_EQ(orlan_latest_notification(latest, &ear), ORLAN_OK);
  EXPECT_THAT(
      heard,
      ElementsAre("Mine [{\"id\":1,\"question\":\"?\",\"has_choices\":false,\"position\":0}] -", "none"));
}

TEST_F(Operations, WhatIsKnownCanBeAsked) {
  EXPECT_THAT(textFrom(orlan_log_file_path), HasSubstr("/orlan-sdk.log"));
  EXPECT_THAT(textFrom(orlan_notification_stats), HasSubstr("Total: 0"));
  EXPECT_EQ(textFrom(orlan_notification_telemetry), "{}");
  EXPECT_EQ(textFrom(orlan_privacy_text), "");
  std::int64_t status = -1;
  EXPECT_EQ(orlan_location_authorization(&status), ORLAN_OK);
  EXPECT_EQ(status, ORLAN_LOCATION_ALWAYS);
  EXPECT_EQ(orlan_push_authorization(&status), ORLAN_OK);
  EXPECT_EQ(status, ORLAN_NOTIFICATIONS_AUTHORIZED);
  const struct {
    const char* answer;
    bool valid;
  } rows[] = {{R"({"question_id":1,"type":"RATING","value":"5"})", true},
              {R"({"question_id":1,"type":"RATING","value":"6"})", false},
              {R"({"question_id":1})", false},
              {"", false}};
  for (const auto& row : rows) {
    bool valid = !row.valid;
    EXPECT_EQ(orlan_survey_answer_is_valid(orlan_str(row.answer), &valid), ORLAN_OK);
    EXPECT_EQ(valid, row.valid) << row.answer;
  }
}

TEST_F(Operations, StreamsCarryWhatHappens) {
  orlan_subscription* held[8] = {};
  ASSERT_EQ(orlan_subscribe_campaigns(Ear::optional, &ear, &held[0]), ORLAN_OK);
  ASSERT_EQ(orlan_subscribe_circles(
                [](void* self, const orlan_circle*, std::size_t count) {
                  Ear::of(self).hear(std::to_string(count) + " circles");
                },
                &ear, &held[1]),
            ORLAN_OK);
  ASSERT_EQ(orlan_subscribe_last_location(
                [](void* self, const orlan_location* fix) {
                  Ear::of(self).hear(fix == nullptr ? "nowhere" : std::to_string(fix->coordinate.latitude));
                },
                &ear, &held[2]),
            ORLAN_OK);
  ASSERT_EQ(orlan_subscribe_polygons(
                [](void* self, const orlan_polygon* polygons, std::size_t count) {
                  Ear::of(self).hear(std::to_string(count) + " polygon of " +
                                     std::to_string(polygons[0].count) + " from " +
                                     std::to_string(polygons[0].vertices[0].latitude));
                },
                &ear, &held[3]),
            ORLAN_OK);
  ASSERT_EQ(heard.size(), 4U);
  EXPECT_THAT(heard[0], HasSubstr(R"("campaignId":42)"));
  EXPECT_EQ(heard[1], "1 circles");
  EXPECT_EQ(heard[3], "1 polygon of 4 from 51.499000");
  heard.clear();
  const auto crossed = [](void* self, orlan_crossing crossing) {
    Ear::of(self).hear("crossed " + std::to_string(crossing.campaign_id));
  };
  for (const int kind :
       {ORLAN_FOREGROUND_ENTER, ORLAN_FOREGROUND_EXIT, ORLAN_BACKGROUND_ENTER, ORLAN_BACKGROUND_EXIT}) {
    ASSERT_EQ(orlan_subscribe_crossings(kind, crossed, &ear, &held[4 + kind]), ORLAN_OK);
  }
  const orlan_geofence_delegate delegate{
      sizeof delegate, &ear,
      [](void* self, orlan_crossing crossing) {
        Ear::of(self).hear("entered " + std::to_string(crossing.location_id));
      },
      nullptr};
  EXPECT_EQ(orlan_foreground_set_delegate(&delegate), ORLAN_OK);
  EXPECT_EQ(orlan_background_set_delegate(&delegate), ORLAN_OK);
  host.phone.moveTo({51.5, -0.12});
  host.pass();
  EXPECT_THAT(heard, ElementsAre("entered 7", "crossed 42", "51.500000"));
  heard.clear();
  host.phone.moveTo({51.49, -0.12});
  EXPECT_EQ(orlan_phone_move_to(host.handle, ORLAN_STATE_BACKGROUND), ORLAN_OK);
  host.pass();
  host.phone.moveTo({51.5, -0.12});
  host.pass();
  EXPECT_THAT(heard, ElementsAre("crossed 42", "51.490000", "entered 7", "crossed 42", "51.500000"));
  for (auto* each : held) orlan_subscription_free(each);
}

}  // namespace
