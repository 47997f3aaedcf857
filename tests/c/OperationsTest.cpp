// What a started library does for a host in C, operation by operation and callback by callback.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "c/TablesOverSimulated.hpp"

namespace {

using orlan::sim::HttpAnswer;
using orlan::test::Ear;
using orlan::test::hears;
using orlan::test::hearsList;
using orlan::test::textFrom;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr orlan_device device{sizeof device, {"00c0ffee-0000-4000-8000-00000000000a", 36}, {}, {}, {}, {}};

/// A started host outside its campaign's square.
struct Started : orlan::test::TablesOverSimulated {
  Started() : TablesOverSimulated([](orlan_phone_parts& parts) { parts.device = &device; }) {
    phone.observe(seen);
    phone.moveTo({51.49, -0.12});
    EXPECT_EQ(orlan_install(handle, nullptr), ORLAN_OK);
    begin(nullptr);
    pass();
  }
  ~Started() { orlan_subscription_free(held); }

  static void begin(const orlan_plugin_delegate* delegate) {
    EXPECT_EQ(orlan_start_with_app_credentials(orlan_str("COMPANY"), orlan_str("APP"), orlan_str("APPKEY"),
                                               orlan_str(""), ORLAN_STAGING, nullptr, 0, true, delegate),
              ORLAN_OK);
  }
  void nothing() {}
  void enter() { phone.moveTo({51.5, -0.12}); }
  void leave() { phone.moveTo({51.49, -0.12}); }
  void hide() { EXPECT_EQ(orlan_phone_move_to(handle, ORLAN_STATE_BACKGROUND), ORLAN_OK); }
  void hideAndEnter() {
    hide();
    enter();
  }
  void deny() { phone.locations().setAuthorization(orlan::LocationAuthorization::denied); }
  void refetch() {
    answer("/api/check-geofence", HttpAnswer::reply(200, R"({"geoCampaign":[],"pushCampaign":[]})"));
    EXPECT_EQ(orlan_refetch_geofence(), ORLAN_OK);
  }
  void bridge() {
    const orlan_notification_delegate table{sizeof table, &ear, hears};
    EXPECT_EQ(orlan_bridge_set_delegate(&table), ORLAN_OK);
    EXPECT_EQ(orlan_bridge_notifications(), ORLAN_OK);
  }
  void tapThen(orlan_done_completion done) {
    EXPECT_EQ(orlan_phone_tapped(handle, &notification, orlan_str("open"), done, &ear), ORLAN_OK);
  }
  void tap() { tapThen(nullptr); }
  /// All that it can to the library around the callback that it stands in.
  void misbehave() {
    ear.then = nullptr;
    EXPECT_EQ(orlan_uninstall(), ORLAN_BUSY);
    EXPECT_EQ(orlan_install(handle, nullptr), ORLAN_BUSY);
    EXPECT_EQ(orlan_phone_free(handle), ORLAN_BUSY);
    orlan_subscription_free(std::exchange(held, nullptr));
    EXPECT_EQ(orlan_foreground_set_delegate(nullptr), ORLAN_OK);
    EXPECT_EQ(orlan_background_set_delegate(nullptr), ORLAN_OK);
    EXPECT_EQ(orlan_bridge_set_delegate(nullptr), ORLAN_OK);
    EXPECT_EQ(orlan_forget_plugin_delegate(), ORLAN_OK);
    EXPECT_EQ(orlan_update_segments(nullptr, 0, nullptr, nullptr), ORLAN_OK);
    begin(nullptr);
    EXPECT_EQ(orlan_foreground_stop(), ORLAN_OK);
    EXPECT_EQ(orlan_clear_latest_notification(), ORLAN_OK);
  }

  const orlan_notification notification = [] {
    orlan_notification made{sizeof made, {}, orlan_str("Tapped")};
    made.user_info = orlan_str(R"({ "a" : [1, 2.5, null] })");
    made.has_badge = true;
    made.badge = 4;
    return made;
  }();
  Ear ear;
  const orlan_plugin_delegate own = orlan::test::delegateFor(ear);
  orlan_subscription* held = nullptr;
};

struct Operations : ::testing::Test {
  /// What is to be seen outside after a call.
  void shows(const char* expected, orlan_status status) {
    EXPECT_EQ(status, ORLAN_OK) << orlan_last_problem();
    host.pass(std::chrono::seconds(2));
    EXPECT_THAT(host.seen.lines, Contains(HasSubstr(expected)));
    host.seen = {};
  }

  Started host;
  Ear& ear = host.ear;
};

TEST_F(Operations, EachIsSeenOutside) {
  const std::string record = host.seen.requests.at(0).body.value_or("");
  EXPECT_THAT(record, HasSubstr("00C0FFEE-0000-4000-8000-00000000000A"));
  EXPECT_THAT(record, Not(HasSubstr("c0ffee")));

  const auto answers = orlan_str(R"([{"question_id":1,"type":"RATING","value":"4"},"no answer"])");
  const auto seven = orlan_str("7");
  const orlan_string tags[] = {orlan_str("north"), orlan_str("loud")};
  host.seen = {};
  shows("✅ Segments updated to: north, loud", orlan_update_segments(tags, 2, hears, &ear));
  shows("/check-geofence", orlan_refetch_geofence());
  shows("APNs token forwarded to SDK", orlan_update_apns_token("\0\xff", 2));
  shows("🔥 FCM token forwarded to SDK", orlan_update_fcm_token(orlan_str("t")));
  shows("survey-response", orlan_submit_survey_response(seven, seven, answers, hears, &ear));
  shows("survey-response", orlan_track_survey_event(seven, {}, orlan_str("shown"), hears, &ear));
  shows("activities", orlan_track_cta_engagement(7, 8));
  shows("activities", orlan_track_media_view(7, 8));
  shows("activities", orlan_report_notification(ORLAN_ACTIVITY_GEOFENCE_EXIT, 7, 8, ORLAN_ABOUT_GEOFENCE));
  shows("notification ", orlan_send_test_notification());
  shows("notification ", orlan_send_test_notification_with_payload(orlan_str("{\"a\":1}")));
  shows("notification ", orlan_send_firebase_style_test_notification());
  shows("🔴 FG-Monitor stopped", orlan_foreground_stop());
  shows("🟢 FG-Monitor started (live GPS)", orlan_foreground_start());
  shows("▶️  BG-Monitor resumed (background mode)", orlan_background_resume());
  shows("⏸️  BG-Monitor paused (foreground mode)", orlan_background_pause());
  shows("🔔 Cleared all notification cooldowns", orlan_foreground_clear_cooldown());
  shows("🔔 BG Cleared all notification cooldowns", orlan_background_clear_cooldown());
  shows("📊 Recorded FG notification: ON_ENTER (Total: 1)",
        orlan_record_fg_notification(orlan_str("ON_ENTER")));
  shows("📊 Recorded BG notification: ON_EXIT (Total: 2)", orlan_record_bg_notification(orlan_str("ON_EXIT")));
  shows("mine", orlan_log(ORLAN_LOG_BREADCRUMB, orlan_str("mine")));
  EXPECT_THAT(ear.heard, ElementsAre("1 -", "1 -", "1 -"));
  for (const auto& quiet : {orlan_clear_logs, orlan_reset_notification_stats, orlan_clear_latest_notification,
                            orlan_request_location_always, orlan_request_location_when_in_use}) {
    EXPECT_EQ(quiet(), ORLAN_OK);
  }
}

TEST_F(Operations, TheLatestNotificationCanBeTheHostsOwn) {
  orlan_notification_details mine{};
  mine.struct_size = sizeof mine;
  mine.headline = orlan_str("Mine");
  mine.questions = orlan_str(R"([{"id":1,"question":"?","has_choices":false,"position":0}])");
  EXPECT_EQ(orlan_set_latest_notification(&mine), ORLAN_OK) << orlan_last_problem();
  EXPECT_EQ(orlan_latest_notification(hears, &ear), ORLAN_OK);
  mine.questions = orlan_str("[1]");
  EXPECT_EQ(orlan_set_latest_notification(&mine), ORLAN_INVALID_ARGUMENT);
  EXPECT_THAT(orlan_last_problem(), HasSubstr("questions: "));
  EXPECT_EQ(orlan_set_latest_notification(nullptr), ORLAN_OK);
  EXPECT_EQ(orlan_latest_notification(hears, &ear), ORLAN_OK);
  EXPECT_THAT(ear.heard,
              ElementsAre(R"(Mine [{"id":1,"question":"?","has_choices":false,"position":0}] -)", "-"));
}

TEST_F(Operations, WhatIsKnownCanBeAsked) {
  EXPECT_THAT(textFrom(orlan_log_file_path), HasSubstr("/orlan-sdk.log"));
  EXPECT_THAT(textFrom(orlan_notification_stats), HasSubstr("Total: 0"));
  EXPECT_EQ(textFrom(orlan_notification_telemetry), "{}");
  EXPECT_EQ(textFrom(orlan_privacy_text), "");
  EXPECT_EQ(orlan_set_correlation_id(orlan_str("mine")), ORLAN_OK);
  EXPECT_EQ(textFrom(orlan_correlation_id), "mine");
  EXPECT_EQ(orlan_clear_correlation_id(), ORLAN_OK);
  EXPECT_EQ(textFrom(orlan_correlation_id), "");
  std::int64_t status = -1;
  EXPECT_EQ(orlan_location_authorization(&status), ORLAN_OK);
  EXPECT_EQ(status, ORLAN_LOCATION_ALWAYS);
  EXPECT_EQ(orlan_push_authorization(&status), ORLAN_OK);
  EXPECT_EQ(status, ORLAN_NOTIFICATIONS_AUTHORIZED);
  const std::pair<const char*, bool> rows[] = {{R"({"question_id":1,"type":"RATING","value":"5"})", true},
                                               {R"({"question_id":1,"type":"RATING","value":"6"})", false},
                                               {R"({"question_id":1})", false},
                                               {"", false}};
  for (const auto& [answer, expected] : rows) {
    bool valid = !expected;
    EXPECT_EQ(orlan_survey_answer_is_valid(orlan_str(answer), &valid), ORLAN_OK);
    EXPECT_EQ(valid, expected) << answer;
  }
}

using Step = std::function<void(Started&)>;

// How a callback comes to be heard.
const auto stream = [](auto subscribe, const auto& how) -> Step {
  return [=](Started& s) { subscribe(how, &s.ear, &s.held); };
};
const auto handled = [](auto subscribe) -> Step {
  return [subscribe](Started& s) {
    subscribe(hears, &s.ear, &s.held);
    orlan_handle_notifications();
  };
};
const auto crossings = [](std::int32_t kind, const Step& before) -> Step {
  return [=](Started& s) {
    before(s);
    s.pass(std::chrono::seconds(20));
    orlan_subscribe_crossings(kind, hears, &s.ear, &s.held);
  };
};
const auto delegate = [](auto set, auto function, const Step& before) -> Step {
  return [=](Started& s) {
    orlan_geofence_delegate table{sizeof table, &s.ear};
    table.*function = hears;
    set(&table);
    before(s);
  };
};

struct Row {
  const char* callback;
  Step listen, cause;
  std::vector<const char*> heard;  // or a part of it; the last while it misbehaves
};

constexpr auto did_enter = &orlan_geofence_delegate::did_enter;
constexpr auto did_exit = &orlan_geofence_delegate::did_exit;
constexpr auto nothing = &Started::nothing;
constexpr auto enter = &Started::enter;
constexpr auto leave = &Started::leave;
constexpr auto tap = &Started::tap;
constexpr auto refetch = &Started::refetch;

const Row rows[] = {
    {"did_authenticate", nothing, [](Started& s) { s.begin(&s.own); }, {"D1 O1"}},
    {"did_fail", nothing, [](Started& s) { orlan_start(0, nullptr, 0, &s.own); }, {"OrlanPlugin -1"}},
    {"an outcome", nothing, [](Started& s) { orlan_update_segments(nullptr, 0, hears, &s.ear); }, {"1 -"}},
    {"an outcome inside the call",
     nothing,
     [](Started& s) { orlan_submit_survey_response(orlan_str("?"), {}, orlan_str("[]"), hears, &s.ear); },
     {"0 Orlan"}},
    {"a text", nothing, [](Started& s) { orlan_refresh_privacy_text(hears, &s.ear); }, {"- URLError"}},
    {"location authorization",
     stream(orlan_subscribe_location_authorization, hears),
     &Started::deny,
     {"3", "2"}},
    {"push authorization",
     stream(orlan_subscribe_push_authorization, hears),
     [](Started&) { orlan_refresh_push_authorization(); },
     {"2", "2"}},
    {"last location", stream(orlan_subscribe_last_location, hears), enter, {"-", "51.500000"}},
    {"polygons", stream(orlan_subscribe_polygons, hearsList), refetch, {"1 51.501000", "0"}},
    {"campaigns", stream(orlan_subscribe_campaigns, hears), refetch, {R"("campaignId":42)", "[]"}},
    {"circles", stream(orlan_subscribe_circles, hearsList), refetch, {"1 51.5", "0"}},
    {"an entry in front", crossings(ORLAN_FOREGROUND_ENTER, nothing), enter, {"42@7"}},
    {"an exit in front", crossings(ORLAN_FOREGROUND_EXIT, enter), leave, {"42@7"}},
    {"an entry behind", crossings(ORLAN_BACKGROUND_ENTER, &Started::hide), enter, {"42@7"}},
    {"an exit behind", crossings(ORLAN_BACKGROUND_EXIT, &Started::hideAndEnter), leave, {"42@7"}},
    {"did_enter in front", delegate(orlan_foreground_set_delegate, did_enter, nothing), enter, {"42@7"}},
    {"did_exit in front", delegate(orlan_foreground_set_delegate, did_exit, enter), leave, {"42@7"}},
    {"did_enter behind", delegate(orlan_background_set_delegate, did_enter, &Started::hide), enter, {"42@7"}},
    {"did_exit behind",
     delegate(orlan_background_set_delegate, did_exit, &Started::hideAndEnter),
     leave,
     {"42@7"}},
    {"a notification", handled(orlan_subscribe_notifications), tap, {"Tapped"}},
    {"the latest notification", handled(orlan_subscribe_latest_notification), tap, {"-", "Tapped"}},
    {"the latest, asked", nothing, [](Started& s) { orlan_latest_notification(hears, &s.ear); }, {"-"}},
    {"the bridge", &Started::bridge, tap, {R"(Tapped {"a":[1,2.5,null]} 4 open)"}},
    {"done", nothing, [](Started& s) { s.tapThen(hears); }, {""}},
    {"shown",
     nothing,
     [](Started& s) { orlan_phone_present(s.handle, &s.notification, hears, &s.ear); },
     {"18"}},
};

TEST(Callbacks, EachIsGivenWhatHappensAndMayDoAllButEndWhatIsAroundIt) {
  for (const auto& row : rows) {
    SCOPED_TRACE(row.callback);
    Started host;
    row.listen(host);
    host.pass();
    host.ear.then = [&host] { host.misbehave(); };
    row.cause(host);
    host.pass(std::chrono::seconds(20));
    ASSERT_EQ(host.ear.heard.size(), row.heard.size());
    for (std::size_t i = 0; i < row.heard.size(); ++i)
      EXPECT_THAT(host.ear.heard[i], HasSubstr(row.heard[i]));
  }
}

}  // namespace
