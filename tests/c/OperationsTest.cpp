// What a started library does for a host in C, operation by operation.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "c/MiniPhone.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::int64_t second = 1'000'000;

class Operations : public ::testing::Test {
 public:
  static void outcome(void* self, bool succeeded, const orlan_error* error) {
    hear(self, succeeded ? "done" : std::string(error->domain.data) + " " + std::to_string(error->code));
  }
  static void text(void* self, const orlan_string* text) {
    hear(self, text == nullptr ? "none" : text->data);
  }
  static void hear(void* self, std::string what) {
    static_cast<Operations*>(self)->heard.push_back(std::move(what));
  }

 protected:
  void SetUp() override {
    mini_serve(phone);
    mini_route(phone, "/segments", 200, "{}");
    mini_route(phone, "/survey-response", 201, "ok");
    ASSERT_EQ(orlan_install(phone->handle, nullptr), ORLAN_OK);
    ASSERT_EQ(mini_move_to(phone, 51.49, -0.12), ORLAN_OK);
    ASSERT_EQ(orlan_start_with_app_credentials(orlan_str("COMPANY"), orlan_str("APP"), orlan_str("APPKEY"),
                                               orlan_str(""), ORLAN_STAGING, nullptr, 0, true, nullptr),
              ORLAN_OK);
    mini_run_for(phone, second);
  }
  ~Operations() override {
    orlan_uninstall();
    EXPECT_EQ(mini_free(phone), ORLAN_OK);
  }

  /// What is to be seen outside once `call` was made.
  std::vector<std::string> seenAfter(const std::function<orlan_status()>& call) {
    const std::size_t before = phone->line_count;
    EXPECT_EQ(call(), ORLAN_OK) << orlan_last_problem();
    mini_run_for(phone, second);
    return {phone->lines + before, phone->lines + phone->line_count};
  }
  std::string textFrom(orlan_status (*get)(orlan_string*)) {
    orlan_string text{};
    EXPECT_EQ(get(&text), ORLAN_OK) << orlan_last_problem();
    std::string copy(text.data == nullptr ? "" : text.data, text.length);
    orlan_string_free(text);
    return copy;
  }

  mini_phone* const phone = mini_new();
  std::vector<std::string> heard;
};

TEST_F(Operations, EachIsSeenOutside) {
  const auto answers = orlan_str(R"([{"question_id":1,"type":"RATING","value":"4"},"no answer"])");
  const auto seven = orlan_str("7");
  const orlan_string tags[] = {orlan_str("north"), orlan_str("loud")};
  const struct {
    const char* expected;
    std::function<orlan_status()> call;
  } rows[] = {
      {"log ✅ Segments updated to: north, loud",
       [&] { return orlan_update_segments(tags, 2, outcome, this); }},
      {"request https", [&] { return orlan_refetch_geofence(); }},
      {"log APNs token forwarded to SDK", [&] { return orlan_update_apns_token("\0\xff", 2); }},
      {"log 🔥 FCM token forwarded to SDK", [&] { return orlan_update_fcm_token(orlan_str("t")); }},
      {"survey-response", [&] { return orlan_submit_survey_response(seven, seven, answers, outcome, this); }},
      {"survey-response",
       [&] { return orlan_track_survey_event(seven, {}, orlan_str("shown"), outcome, this); }},
      {"activities", [&] { return orlan_track_cta_engagement(7, 8); }},
      {"activities", [&] { return orlan_track_media_view(7, 8); }},
      {"activities",
       [&] { return orlan_report_notification(ORLAN_ACTIVITY_GEOFENCE_EXIT, 7, 8, ORLAN_ABOUT_GEOFENCE); }},
      {"notification ", [&] { return orlan_send_test_notification(); }},
      {"notification ", [&] { return orlan_send_test_notification_with_payload(orlan_str("{\"a\":1}")); }},
      {"notification ", [&] { return orlan_send_firebase_style_test_notification(); }},
      {"log 🟢 FG-Monitor started (live GPS)", orlan_foreground_start},
      {"log 🔴 FG-Monitor stopped", orlan_foreground_stop},
      {"log ▶️  BG-Monitor resumed (background mode)", orlan_background_resume},
      {"log ⏸️  BG-Monitor paused (foreground mode)", orlan_background_pause},
      {"log 🔔 Cleared all notification cooldowns", orlan_foreground_clear_cooldown},
      {"log 🔔 BG Cleared all notification cooldowns", orlan_background_clear_cooldown},
      {"log 📊 Recorded FG notification: ON_ENTER (Total: 1)",
       [&] { return orlan_record_fg_notification(orlan_str("ON_ENTER")); }},
      {"log 📊 Recorded BG notification: ON_EXIT (Total: 2)",
       [&] { return orlan_record_bg_notification(orlan_str("ON_EXIT")); }},
      {"log mine", [&] { return orlan_log(ORLAN_LOG_BREADCRUMB, orlan_str("mine")); }},
  };
  for (const auto& row : rows) {
    const auto seen = seenAfter(row.call);
    EXPECT_THAT(seen, ::testing::Contains(HasSubstr(row.expected)));
  }
  EXPECT_THAT(heard, ElementsAre("done", "done", "done"));
  EXPECT_EQ(orlan_report_notification(7, 0, 0, 0), ORLAN_INVALID_ARGUMENT);
  for (const auto& quiet :
       {orlan_clear_logs, orlan_clear_correlation_id, orlan_reset_notification_stats,
        orlan_clear_latest_notification, orlan_request_location_always, orlan_request_location_when_in_use}) {
    EXPECT_EQ(quiet(), ORLAN_OK);
  }
}

TEST_F(Operations, TheLatestNotificationCanBeTheHostsOwn) {
  const auto latest = [](void* self, const orlan_notification_details* details) {
    hear(self, details == nullptr
                   ? "none"
                   : std::string(details->headline.data) + " " + details->questions.data + " " +
                         (details->cta_url.data == nullptr ? "-" : details->cta_url.data));
  };
  orlan_notification_details mine{};
  mine.struct_size = sizeof mine;
  mine.headline = orlan_str("Mine");
  mine.questions = orlan_str("[{\"id\":1,\"question\":\"?\",\"has_choices\":false,\"position\":0}]");
  EXPECT_EQ(orlan_set_latest_notification(&mine), ORLAN_OK) << orlan_last_problem();
  EXPECT_EQ(orlan_latest_notification(latest, this), ORLAN_OK);
  mine.questions = orlan_str("[1]");
  EXPECT_EQ(orlan_set_latest_notification(&mine), ORLAN_INVALID_ARGUMENT);
  EXPECT_THAT(orlan_last_problem(), HasSubstr("questions: "));
  EXPECT_EQ(orlan_set_latest_notification(nullptr), ORLAN_OK);
  EXPECT_EQ(orlan_latest_notification(latest, this), ORLAN_OK);
  EXPECT_THAT(
      heard,
      ElementsAre("Mine [{\"id\":1,\"question\":\"?\",\"has_choices\":false,\"position\":0}] -", "none"));
}

TEST_F(Operations, WhatIsKnownCanBeAsked) {
  EXPECT_THAT(textFrom(orlan_log_file_path), HasSubstr("/memory/orlan-sdk.log"));
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
  orlan_subscription* held[5] = {};
  ASSERT_EQ(orlan_subscribe_campaigns(text, this, &held[0]), ORLAN_OK);
  ASSERT_EQ(orlan_subscribe_circles([](void* self, const orlan_circle*,
                                       std::size_t count) { hear(self, std::to_string(count) + " circles"); },
                                    this, &held[1]),
            ORLAN_OK);
  ASSERT_EQ(orlan_subscribe_last_location(
                [](void* self, const orlan_location* fix) {
                  hear(self, fix == nullptr ? "nowhere" : std::to_string(fix->coordinate.latitude));
                },
                this, &held[2]),
            ORLAN_OK);
  ASSERT_EQ(heard.size(), 3U);
  EXPECT_THAT(heard[0], HasSubstr(R"("campaignId":42)"));
  EXPECT_EQ(heard[1], "1 circles");
  heard.clear();
  for (const auto& [kind, name] : {std::pair{ORLAN_BACKGROUND_ENTER, 3}, {ORLAN_BACKGROUND_EXIT, 4}}) {
    ASSERT_EQ(orlan_subscribe_crossings(
                  kind,
                  [](void* self, orlan_crossing crossing) {
                    hear(self, "crossed " + std::to_string(crossing.campaign_id));
                  },
                  this, &held[name]),
              ORLAN_OK);
  }
  const orlan_geofence_delegate delegate{sizeof delegate, this,
                                         [](void* self, orlan_crossing crossing) {
                                           hear(self, "entered " + std::to_string(crossing.location_id));
                                         },
                                         nullptr};
  EXPECT_EQ(orlan_background_set_delegate(&delegate), ORLAN_OK);
  EXPECT_EQ(orlan_phone_move_to(phone->handle, ORLAN_STATE_BACKGROUND), ORLAN_OK);
  const orlan_region region{orlan_str("camp_42_7"), {{51.5, -0.12}, 100}, true, true};
  EXPECT_EQ(orlan_phone_region_entered(phone->handle, ORLAN_ALL_MANAGERS, &region), ORLAN_OK);
  mini_run_for(phone, second);
  EXPECT_THAT(heard, ElementsAre("entered 7", "crossed 42"));
  for (auto* each : held) orlan_subscription_free(each);
}

}  // namespace
