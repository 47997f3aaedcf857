// Mistakes, texts, completions and delegates at the border between a host in C and the library.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "c/TablesOverSimulated.hpp"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using namespace std::string_literals;

using orlan::sim::HttpAnswer;
using orlan::test::copy;
using orlan::test::Ear;
using orlan::test::TablesOverSimulated;

constexpr auto anHour = std::chrono::hours(1);
constexpr char registration[] = "/api/device-registerd/create";

orlan_string lend(const std::string& text) {
  return {text.data(), text.size()};
}
/// Any callback at all.
constexpr auto hear = [](void* context, auto...) { Ear::of(context).hear("heard"); };

/// Which mistake a call was said to be.
void refused(const char* words, orlan_status expected, orlan_status status) {
  EXPECT_EQ(status, expected) << words;
  EXPECT_THAT(orlan_last_problem(), HasSubstr(words));
}

class Border : public ::testing::Test {
 protected:
  Border() { host.phone.observe(host.seen); }
  void install() { ASSERT_EQ(orlan_install(host.handle, nullptr), ORLAN_OK) << orlan_last_problem(); }
  static orlan_status begin(const orlan_plugin_delegate* delegate, const char* key = "KEY") {
    return orlan_start_with_api_key(orlan_str(key), ORLAN_STAGING, nullptr, 0, delegate);
  }
  void start() {
    const auto delegate = ear.delegate();
    ASSERT_EQ(begin(&delegate), ORLAN_OK);
    host.pass();
  }

  TablesOverSimulated host;
  Ear ear;
};

TEST_F(Border, EveryMistakeHasAStatusAndWordsAndChangesNothing) {
  const auto broken = orlan_str("a\xff");
  const auto key = orlan_str("KEY");
  orlan_string text{};
  orlan_subscription* subscription = nullptr;
  const orlan_plugin_delegate sizeless{};
  orlan_base_url url{ORLAN_STAGING, ORLAN_PLATFORM_API, orlan_str("no url")};
  const orlan_options options{sizeof options, &url, 1};
  const orlan_http_reply reply{};
  refused("orlan_start: orlan_install comes first", ORLAN_NOT_INSTALLED, orlan_start(0, nullptr, 0, nullptr));
  refused("there is no such phone", ORLAN_INVALID_ARGUMENT, orlan_install(nullptr, nullptr));
  refused("base_urls: ", ORLAN_INVALID_ARGUMENT, orlan_install(host.handle, &options));
  url = {9, ORLAN_PLATFORM_API, orlan_str("https://a.example")};
  refused("no such environment", ORLAN_INVALID_ARGUMENT, orlan_install(host.handle, &options));
  install();
  refused("a phone is installed already", ORLAN_BUSY, orlan_install(host.handle, nullptr));
  refused("the phone is installed", ORLAN_BUSY, orlan_phone_free(host.handle));
  refused("api_key: not UTF-8", ORLAN_NOT_UTF8, orlan_start_with_api_key(broken, 0, nullptr, 0, nullptr));
  refused("segmentations is NULL", ORLAN_INVALID_ARGUMENT, orlan_start(0, nullptr, 2, nullptr));
  refused("struct_size is not set", ORLAN_INVALID_ARGUMENT, orlan_start(0, nullptr, 0, &sizeless));
  refused("data is NULL", ORLAN_INVALID_ARGUMENT, orlan_update_fcm_token({nullptr, 3}));
  refused("upper is NULL", ORLAN_INVALID_ARGUMENT, orlan_transform(key, nullptr));
  refused("text: not UTF-8", ORLAN_NOT_UTF8, orlan_transform(broken, &text));
  refused("handler is NULL", ORLAN_INVALID_ARGUMENT,
          orlan_subscribe_polygons(nullptr, nullptr, &subscription));
  refused("subscription is NULL", ORLAN_INVALID_ARGUMENT,
          orlan_subscribe_location_authorization(Ear::integer, &ear, nullptr));
  refused("no such kind", ORLAN_INVALID_ARGUMENT, orlan_subscribe_crossings(7, hear, &ear, &subscription));
  refused("no such level", ORLAN_INVALID_ARGUMENT, orlan_log(9, key));
  refused("no such activity", ORLAN_INVALID_ARGUMENT, orlan_report_notification(7, 0, 0, 0));
  refused("answers: ", ORLAN_NOT_JSON,
          orlan_submit_survey_response(key, {}, orlan_str("[1,"), Ear::outcome, &ear));
  refused("user_info: not a JSON object", ORLAN_NOT_JSON,
          orlan_send_test_notification_with_payload(orlan_str("[]")));
  refused("fixes is NULL", ORLAN_INVALID_ARGUMENT, orlan_phone_fixes(host.handle, 0, nullptr, 1));
  refused("no such signal", ORLAN_INVALID_ARGUMENT, orlan_phone_signal(host.handle, 9));
  refused("no such state", ORLAN_INVALID_ARGUMENT, orlan_phone_move_to(host.handle, -1));
  refused("reply: struct_size", ORLAN_INVALID_ARGUMENT, orlan_phone_http_reply(host.handle, 1, &reply));
  EXPECT_THAT(ear.heard, IsEmpty());
  EXPECT_EQ(subscription, nullptr);
  EXPECT_THAT(host.seen.after("request "), IsEmpty());
}

TEST_F(Border, AnotherThreadDoesOnlyWhatAnyThreadMay) {
  install();
  orlan_subscription* status = nullptr;
  ASSERT_EQ(orlan_subscribe_location_authorization(Ear::integer, &ear, &status), ORLAN_OK);
  ASSERT_EQ(begin(nullptr), ORLAN_OK);
  const orlan_id task = host.lastTask;
  std::thread([&] {
    EXPECT_STREQ(orlan_last_problem(), "");
    EXPECT_EQ(orlan_refetch_geofence(), ORLAN_WRONG_THREAD);
    EXPECT_EQ(orlan_phone_move_to(host.handle, 0), ORLAN_WRONG_THREAD);
    EXPECT_EQ(orlan_log(ORLAN_LOG_WARN, orlan_str("from elsewhere")), ORLAN_OK);
    EXPECT_EQ(orlan_phone_run(host.handle, task), ORLAN_WRONG_THREAD);
    orlan_subscription_free(status);
    EXPECT_STREQ(orlan_last_problem(), "orlan_subscription_free: not on the main thread");
  }).join();
  EXPECT_EQ(orlan_phone_run(host.handle, task), ORLAN_OK) << "it still waited";
  EXPECT_EQ(orlan_phone_run(host.handle, task), ORLAN_UNKNOWN);
  host.pass();
  ear.heard.clear();
  host.phone.locations().setAuthorization(orlan::LocationAuthorization::denied);
  host.pass();
  EXPECT_THAT(ear.heard, ElementsAre("2")) << "the stream goes on";
  EXPECT_THAT(host.seen.after("log WARN "), ElementsAre("from elsewhere"));
  EXPECT_EQ(orlan_uninstall(), ORLAN_OK);
  std::thread([=] { orlan_subscription_free(status); }).join();
}

TEST_F(Border, InsideAFunctionOfThePhoneOnlyAnswersAreTaken) {
  struct Eager {
    orlan_phone* handle = nullptr;
    std::vector<orlan_status> seen;
  } eager;
  const orlan_loop_functions loop{sizeof loop, &eager,
                                  [](void* context, orlan_id task) {
                                    auto& self = *static_cast<Eager*>(context);
                                    self.seen = {orlan_phone_run(self.handle, task),
                                                 orlan_phone_move_to(self.handle, ORLAN_STATE_BACKGROUND),
                                                 orlan_refetch_geofence(),
                                                 orlan_phone_answer(self.handle, 1, 0, nullptr)};
                                  },
                                  [](void*, std::int64_t, orlan_id) {}};
  const orlan_phone_parts parts{sizeof parts, &loop};
  ASSERT_EQ(orlan_phone_new(&parts, &eager.handle), ORLAN_OK);
  ASSERT_EQ(orlan_install(eager.handle, nullptr), ORLAN_OK);
  ASSERT_EQ(orlan_refresh_push_authorization(), ORLAN_OK);
  EXPECT_THAT(eager.seen, ElementsAre(ORLAN_BUSY, ORLAN_BUSY, ORLAN_BUSY, ORLAN_UNKNOWN));
  ASSERT_EQ(orlan_uninstall(), ORLAN_OK);
  ASSERT_EQ(orlan_phone_free(eager.handle), ORLAN_OK);
}

TEST_F(Border, PartsOfAPhoneThatCannotWorkAreRefused) {
  const orlan_loop_functions mute{sizeof mute};
  const orlan_loop_functions loop{
      sizeof loop, nullptr, [](void*, orlan_id) {}, [](void*, std::int64_t, orlan_id) {}, nullptr, nullptr};
  const orlan_store_functions half{sizeof half, nullptr, [](void*, orlan_string, orlan_answer*) {}};
  const orlan_bundle bundle{sizeof bundle, {}, orlan_str("{")};
  orlan_phone* made = nullptr;
  orlan_phone_parts parts{sizeof parts};
  refused("post and post_after are needed", ORLAN_INVALID_ARGUMENT, orlan_phone_new(&parts, &made));
  parts.loop = &mute;
  refused("post and post_after are needed", ORLAN_INVALID_ARGUMENT, orlan_phone_new(&parts, &made));
  parts.loop = &loop;
  parts.store = &half;
  refused("store: all four functions are needed", ORLAN_INVALID_ARGUMENT, orlan_phone_new(&parts, &made));
  parts.store = nullptr;
  parts.bundle = &bundle;
  refused("bundle.info", ORLAN_NOT_JSON, orlan_phone_new(&parts, &made));
  EXPECT_EQ(made, nullptr);
}

TEST_F(Border, TextsOfAnyLengthAndWithNulPassWhole) {
  install();
  const struct {
    const char* name;
    std::string text, upper;
  } rows[] = {
      {"NUL", "a\0b"s, "A\0B"s},
      {"beyond ASCII", "straße 🔔", "STRASSE 🔔"},
      {"a megabyte", std::string(1'000'000, 'x'), std::string(1'000'000, 'X')},
  };
  for (const auto& row : rows) {
    orlan_string upper{};
    ASSERT_EQ(orlan_transform(lend(row.text), &upper), ORLAN_OK) << row.name;
    EXPECT_EQ(copy(upper), row.upper) << row.name;
    EXPECT_EQ(upper.data[upper.length], '\0') << row.name;
    orlan_string_free(upper);

    orlan_string kept{};
    ASSERT_EQ(orlan_set_correlation_id(lend(row.text)), ORLAN_OK) << row.name;
    ASSERT_EQ(orlan_correlation_id(&kept), ORLAN_OK) << row.name;
    EXPECT_EQ(copy(kept), row.text) << row.name;
    orlan_string_free(kept);
  }
  orlan_string none{};
  ASSERT_EQ(orlan_current_configuration(&none), ORLAN_OK);
  EXPECT_EQ(none.data, nullptr);
  orlan_string_free(none);
}

TEST_F(Border, CompletionsComeOnceWhateverHappens) {
  install();
  host.answer(
      "/api/get-config",
      HttpAnswer::reply(
          200,
          R"({"configuration":{"notificationsCount":3,"daysCount":2,"batteryCount":1,"privacyText":"P"}})"));
  EXPECT_EQ(orlan_fetch_configuration(true, Ear::text, &ear), ORLAN_OK);
  EXPECT_THAT(ear.heard, ElementsAre("OrlanPlugin -1")) << "refused inside the call";
  start();
  ear.heard.clear();

  // Nobody who wants to know; and one that asks again from inside.
  EXPECT_EQ(orlan_fetch_configuration(true, nullptr, nullptr), ORLAN_OK);
  ear.then = [this] {
    ear.then = nullptr;
    EXPECT_EQ(orlan_refresh_privacy_text(Ear::text, &ear), ORLAN_OK);
  };
  EXPECT_EQ(orlan_fetch_configuration(true, Ear::text, &ear), ORLAN_OK);
  host.pass();
  EXPECT_THAT(
      ear.heard,
      ElementsAre(R"({"notificationsCount":3,"daysCount":2,"batteryCount":1,"privacyText":"P"})", "P"));

  // The library ends before the answer: they hear of it, and find nothing installed.
  ear.heard.clear();
  for (const char* path : {"/api/get-config", "/api/survey-response"}) {
    host.answer(path, HttpAnswer::reply(200).after(anHour));
  }
  EXPECT_EQ(orlan_refresh_privacy_text(Ear::text, &ear), ORLAN_OK);
  EXPECT_EQ(orlan_track_survey_event(orlan_str("7"), {}, orlan_str("shown"), Ear::outcome, &ear), ORLAN_OK);
  ear.then = [this] {
    EXPECT_EQ(orlan_refetch_geofence(), ORLAN_NOT_INSTALLED);
    EXPECT_EQ(orlan_install(host.handle, nullptr), ORLAN_BUSY);
  };
  host.pass();
  EXPECT_EQ(orlan_uninstall(), ORLAN_OK);
  EXPECT_THAT(ear.heard, ElementsAre("OrlanC 1", "OrlanC 1"));
  const orlan_http_reply reply{sizeof reply, 200};
  EXPECT_EQ(orlan_phone_http_reply(host.handle, host.lastCall, &reply), ORLAN_UNKNOWN);
  host.pass();
  EXPECT_EQ(ear.heard.size(), 2U);
}

TEST_F(Border, AStartReplacesTheDelegateOfTheOneBeforeUnlessItIsRefused) {
  install();
  Ear other;
  auto delegate = ear.delegate();
  const auto otherDelegate = other.delegate();
  EXPECT_EQ(begin(&otherDelegate), ORLAN_OK);
  EXPECT_EQ(begin(&delegate), ORLAN_OK);
  delegate = {};  // it was copied
  // Refused, as there is no property list: by one that hears of it; by one that was written for an older
  // header, without the second function; by none at all.
  auto older = other.delegate();
  older.struct_size = offsetof(orlan_plugin_delegate, did_fail);
  for (const auto* refused : {&otherDelegate, const_cast<const orlan_plugin_delegate*>(&older),
                              static_cast<const orlan_plugin_delegate*>(nullptr)}) {
    EXPECT_EQ(orlan_start(ORLAN_STAGING, nullptr, 0, refused), ORLAN_OK);
  }
  EXPECT_THAT(other.heard, ElementsAre("OrlanPlugin -1"));
  host.pass();
  EXPECT_THAT(ear.heard, ElementsAre("D1 O1")) << "the refused ones changed nothing";

  // A host lets its delegate go while a start is under way.
  EXPECT_EQ(begin(&otherDelegate, "OTHER KEY"), ORLAN_OK);
  EXPECT_EQ(orlan_forget_plugin_delegate(), ORLAN_OK);
  host.pass();
  EXPECT_EQ(other.heard.size(), 1U);
}

/// A started host whose next callback does what it can to the library around it.
struct Scene : TablesOverSimulated {
  Scene() {
    phone.moveTo({51.49, -0.12});
    EXPECT_EQ(orlan_install(handle, nullptr), ORLAN_OK);
    begin(orlan_plugin_delegate{sizeof(orlan_plugin_delegate)});
    pass();
  }
  ~Scene() { orlan_subscription_free(held); }
  static void begin(const orlan_plugin_delegate& delegate) {
    EXPECT_EQ(orlan_start_with_api_key(orlan_str("KEY"), ORLAN_STAGING, nullptr, 0, &delegate), ORLAN_OK);
  }
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
    begin(orlan_plugin_delegate{sizeof(orlan_plugin_delegate)});
    EXPECT_EQ(orlan_foreground_stop(), ORLAN_OK);
    EXPECT_EQ(orlan_clear_latest_notification(), ORLAN_OK);
  }
  void tap(orlan_done_completion done = nullptr) {
    EXPECT_EQ(orlan_phone_tapped(handle, &notification, {}, done, &ear), ORLAN_OK);
  }

  const orlan_notification notification{sizeof notification};
  Ear ear;
  orlan_subscription* held = nullptr;
};

TEST(Callbacks, EachMayDoAllButEndWhatIsAroundItAndIsOver) {
  const auto nothing = [](Scene&) {};
  const auto stream = [](auto subscribe) {
    return [subscribe](Scene& s) { subscribe(hear, &s.ear, &s.held); };
  };
  const auto handled = [](auto subscribe) {
    return [subscribe](Scene& s) {
      subscribe(hear, &s.ear, &s.held);
      orlan_handle_notifications();
    };
  };
  const auto delegate = [](auto set) {
    return [set](Scene& s) {
      const orlan_geofence_delegate table{sizeof table, &s.ear, hear, hear};
      set(&table);
    };
  };
  const auto enter = [](Scene& s) { s.phone.moveTo({51.5, -0.12}); };
  const auto tap = [](Scene& s) { s.tap(); };
  const auto refetch = [](Scene& s) {
    s.answer("/api/check-geofence", HttpAnswer::reply(200, R"({"geoCampaign":[],"pushCampaign":[]})"));
    orlan_refetch_geofence();
  };
  const struct {
    const char* callback;
    std::function<void(Scene&)> listen, cause;
  } rows[] = {
      {"did_authenticate", nothing, [](Scene& s) { s.begin(s.ear.delegate()); }},
      {"did_fail", nothing,
       [](Scene& s) {
         const auto own = s.ear.delegate();
         orlan_start(ORLAN_STAGING, nullptr, 0, &own);
       }},
      {"an outcome", nothing, [](Scene& s) { orlan_update_segments(nullptr, 0, hear, &s.ear); }},
      {"an outcome inside the call", nothing,
       [](Scene& s) { orlan_submit_survey_response(orlan_str("?"), {}, orlan_str("[]"), hear, &s.ear); }},
      {"a text", nothing, [](Scene& s) { orlan_refresh_privacy_text(hear, &s.ear); }},
      {"location authorization", stream(orlan_subscribe_location_authorization),
       [](Scene& s) { s.phone.locations().setAuthorization(orlan::LocationAuthorization::denied); }},
      {"push authorization", stream(orlan_subscribe_push_authorization),
       [](Scene&) { orlan_refresh_push_authorization(); }},
      {"last location", stream(orlan_subscribe_last_location), enter},
      {"polygons", stream(orlan_subscribe_polygons), refetch},
      {"campaigns", stream(orlan_subscribe_campaigns), refetch},
      {"circles", stream(orlan_subscribe_circles), refetch},
      {"a crossing",
       [](Scene& s) { orlan_subscribe_crossings(ORLAN_FOREGROUND_ENTER, hear, &s.ear, &s.held); }, enter},
      {"did_enter in front", delegate(orlan_foreground_set_delegate), enter},
      {"did_enter in the background", delegate(orlan_background_set_delegate),
       [&](Scene& s) {
         orlan_phone_move_to(s.handle, ORLAN_STATE_BACKGROUND);
         enter(s);
       }},
      {"a notification", handled(orlan_subscribe_notifications), tap},
      {"the latest notification", handled(orlan_subscribe_latest_notification), tap},
      {"the latest, asked", nothing, [](Scene& s) { orlan_latest_notification(hear, &s.ear); }},
      {"the bridge",
       [](Scene& s) {
         const orlan_notification_delegate table{sizeof table, &s.ear, hear};
         orlan_bridge_set_delegate(&table);
         orlan_bridge_notifications();
       },
       tap},
      {"done", nothing, [](Scene& s) { s.tap(hear); }},
      {"shown", nothing, [](Scene& s) { orlan_phone_present(s.handle, &s.notification, hear, &s.ear); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.callback);
    Scene scene;
    row.listen(scene);
    scene.pass();
    scene.ear.heard.clear();
    scene.ear.then = [&scene] { scene.misbehave(); };
    row.cause(scene);
    scene.pass(std::chrono::seconds(20));
    EXPECT_EQ(scene.ear.heard.size(), 1U);
  }
}

TEST_F(Border, ATappedNotificationReachesTheBridgeAsItIs) {
  install();
  std::string got;
  const orlan_notification_delegate delegate{
      sizeof delegate, &got, [](void* context, const orlan_notification* notification, orlan_string action) {
        *static_cast<std::string*>(context) = copy(notification->title) + "|" +
                                              copy(notification->user_info) + "|" +
                                              std::to_string(notification->badge) + "|" + copy(action);
      }};
  EXPECT_EQ(orlan_bridge_set_delegate(&delegate), ORLAN_OK);
  EXPECT_EQ(orlan_bridge_notifications(), ORLAN_OK);
  orlan_notification tapped{};
  tapped.struct_size = sizeof tapped;
  tapped.title = orlan_str("Hello");
  tapped.user_info = orlan_str(R"({ "a" : [1, 2.5, null] })");
  tapped.has_badge = true;
  tapped.badge = 4;
  std::uint32_t shown = 0;
  const auto note = [](void* bits, std::uint32_t options) { *static_cast<std::uint32_t*>(bits) = options; };
  EXPECT_EQ(orlan_phone_present(host.handle, &tapped, note, &shown), ORLAN_OK);
  EXPECT_EQ(shown, static_cast<std::uint32_t>(ORLAN_SHOW_BANNER | ORLAN_SHOW_SOUND | ORLAN_SHOW_BADGE));
  EXPECT_EQ(orlan_phone_tapped(host.handle, &tapped, orlan_str("open"), nullptr, nullptr), ORLAN_OK);
  EXPECT_EQ(got, R"(Hello|{"a":[1,2.5,null]}|4|open)");
}

TEST(PhoneHandles, AFreedPhoneIsWrongForEverAndLateAnswersAreHarmless) {
  orlan_phone* handle = nullptr;
  orlan_id call = 0;
  {
    TablesOverSimulated host;
    handle = host.handle;
    host.answer(registration, HttpAnswer::reply(200).after(anHour));
    ASSERT_EQ(orlan_install(handle, nullptr), ORLAN_OK);
    ASSERT_EQ(orlan_start_with_api_key(orlan_str("KEY"), ORLAN_STAGING, nullptr, 0, nullptr), ORLAN_OK);
    call = host.lastCall;
  }
  EXPECT_EQ(orlan_phone_http_failed(handle, call, 0, orlan_str("late")), ORLAN_INVALID_ARGUMENT);
  EXPECT_EQ(orlan_phone_run(handle, 1), ORLAN_INVALID_ARGUMENT);
  EXPECT_EQ(orlan_phone_free(handle), ORLAN_INVALID_ARGUMENT);
  EXPECT_EQ(orlan_install(handle, nullptr), ORLAN_INVALID_ARGUMENT);
  EXPECT_EQ(orlan_phone_free(nullptr), ORLAN_OK);
}

}  // namespace
