// Mistakes, texts, completions and delegates at the border between a host in C and the library.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "c/MiniPhone.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using namespace std::string_literals;

constexpr std::int64_t second = 1'000'000;

orlan_string lend(const std::string& text) {
  return {text.data(), text.size()};
}
std::string copy(orlan_string text) {
  return {text.data, text.length};
}

/// Hears completions and delegates; `then` runs inside each.
struct Ear {
  std::vector<std::string> heard;
  std::function<void()> then;

  void hear(std::string what) {
    heard.push_back(std::move(what));
    if (then) then();
  }
  static Ear& of(void* context) { return *static_cast<Ear*>(context); }
  static std::string named(const orlan_error* error) {
    return copy(error->domain) + " " + std::to_string(error->code);
  }
  static void outcome(void* context, bool succeeded, const orlan_error* error) {
    of(context).hear(succeeded ? "done" : named(error));
  }
  static void text(void* context, const orlan_string* value, const orlan_error* error) {
    of(context).hear(value != nullptr ? copy(*value) : named(error));
  }
  static void integer(void* context, std::int64_t value) { of(context).hear(std::to_string(value)); }
  orlan_plugin_delegate delegate() {
    return {sizeof(orlan_plugin_delegate), this,
            [](void* context, orlan_string device, orlan_string orlan) {
              of(context).hear(copy(device) + " " + copy(orlan));
            },
            [](void* context, const orlan_error* error) { of(context).hear(named(error)); }};
  }
};

struct Mistake {
  const char* words;
  orlan_status status;
  std::function<orlan_status()> call;
};

class Border : public ::testing::Test {
 protected:
  Border() { mini_serve(phone); }
  ~Border() override {
    orlan_uninstall();
    EXPECT_EQ(mini_free(phone), ORLAN_OK) << orlan_last_problem();
  }
  void install() { ASSERT_EQ(orlan_install(phone->handle, nullptr), ORLAN_OK) << orlan_last_problem(); }
  void start() {
    const auto delegate = ear.delegate();
    ASSERT_EQ(orlan_start_with_api_key(orlan_str("KEY"), ORLAN_STAGING, nullptr, 0, &delegate), ORLAN_OK);
    mini_run_for(phone, second);
  }

  mini_phone* const phone = mini_new();
  Ear ear;
};

TEST_F(Border, EveryMistakeHasAStatusAndWordsAndChangesNothing) {
  const std::string broken = "a\xff";
  const auto key = orlan_str("KEY");
  orlan_string text{};
  orlan_subscription* subscription = nullptr;
  const orlan_plugin_delegate sizeless{};
  const orlan_base_url url{ORLAN_STAGING, ORLAN_PLATFORM_API, orlan_str("no url")};
  const orlan_base_url nowhere{9, ORLAN_PLATFORM_API, orlan_str("https://a.example")};
  const orlan_options badUrl{sizeof badUrl, &url, 1};
  const orlan_options badEnvironment{sizeof badEnvironment, &nowhere, 1};
  const orlan_http_reply reply{};
  const Mistake before[] = {
      {"orlan_start: orlan_install comes first", ORLAN_NOT_INSTALLED,
       [&] { return orlan_start(0, nullptr, 0, nullptr); }},
      {"orlan_log: orlan_install comes first", ORLAN_NOT_INSTALLED, [&] { return orlan_log(0, key); }},
      {"orlan_uninstall: orlan_install comes first", ORLAN_NOT_INSTALLED, [&] { return orlan_uninstall(); }},
      {"orlan_install: there is no such phone", ORLAN_INVALID_ARGUMENT,
       [&] { return orlan_install(nullptr, nullptr); }},
      {"base_urls: ", ORLAN_INVALID_ARGUMENT, [&] { return orlan_install(phone->handle, &badUrl); }},
      {"no such environment", ORLAN_INVALID_ARGUMENT,
       [&] { return orlan_install(phone->handle, &badEnvironment); }},
  };
  for (const auto& row : before) {
    EXPECT_EQ(row.call(), row.status) << row.words;
    EXPECT_THAT(orlan_last_problem(), HasSubstr(row.words));
  }
  install();
  const Mistake after[] = {
      {"a phone is installed already", ORLAN_BUSY, [&] { return orlan_install(phone->handle, nullptr); }},
      {"the phone is installed", ORLAN_BUSY, [&] { return orlan_phone_free(phone->handle); }},
      {"api_key: not UTF-8", ORLAN_NOT_UTF8,
       [&] { return orlan_start_with_api_key(lend(broken), 0, nullptr, 0, nullptr); }},
      {"segmentations is NULL", ORLAN_INVALID_ARGUMENT, [&] { return orlan_start(0, nullptr, 2, nullptr); }},
      {"struct_size is not set", ORLAN_INVALID_ARGUMENT,
       [&] { return orlan_start(0, nullptr, 0, &sizeless); }},
      {"data is NULL", ORLAN_INVALID_ARGUMENT,
       [&] {
         return orlan_update_fcm_token({nullptr, 3});
       }},
      {"upper is NULL", ORLAN_INVALID_ARGUMENT, [&] { return orlan_transform(key, nullptr); }},
      {"text: not UTF-8", ORLAN_NOT_UTF8, [&] { return orlan_transform(lend(broken), &text); }},
      {"handler is NULL", ORLAN_INVALID_ARGUMENT,
       [&] { return orlan_subscribe_polygons(nullptr, nullptr, &subscription); }},
      {"subscription is NULL", ORLAN_INVALID_ARGUMENT,
       [&] { return orlan_subscribe_location_authorization(Ear::integer, &ear, nullptr); }},
      {"no such kind", ORLAN_INVALID_ARGUMENT,
       [&] {
         return orlan_subscribe_crossings(
             7, [](void*, orlan_crossing) {}, nullptr, &subscription);
       }},
      {"no such level", ORLAN_INVALID_ARGUMENT, [&] { return orlan_log(9, key); }},
      {"answers: ", ORLAN_NOT_JSON,
       [&] { return orlan_submit_survey_response(key, {}, orlan_str("[1,"), Ear::outcome, &ear); }},
      {"user_info: not a JSON object", ORLAN_NOT_JSON,
       [&] { return orlan_send_test_notification_with_payload(orlan_str("[]")); }},
      {"fixes is NULL", ORLAN_INVALID_ARGUMENT,
       [&] { return orlan_phone_fixes(phone->handle, 0, nullptr, 1); }},
      {"no such signal", ORLAN_INVALID_ARGUMENT, [&] { return orlan_phone_signal(phone->handle, 9); }},
      {"no such state", ORLAN_INVALID_ARGUMENT, [&] { return orlan_phone_move_to(phone->handle, -1); }},
      {"reply: struct_size", ORLAN_INVALID_ARGUMENT,
       [&] { return orlan_phone_http_reply(phone->handle, 1, &reply); }},
  };
  for (const auto& row : after) {
    EXPECT_EQ(row.call(), row.status) << row.words;
    EXPECT_THAT(orlan_last_problem(), HasSubstr(row.words));
  }
  std::thread([&] {
    EXPECT_STREQ(orlan_last_problem(), "");
    EXPECT_EQ(orlan_refetch_geofence(), ORLAN_WRONG_THREAD);
    EXPECT_EQ(orlan_phone_move_to(phone->handle, 0), ORLAN_WRONG_THREAD);
    EXPECT_EQ(orlan_log(ORLAN_LOG_WARN, orlan_str("from elsewhere")), ORLAN_OK);
  }).join();
  EXPECT_THAT(ear.heard, IsEmpty());
  EXPECT_EQ(subscription, nullptr);
  EXPECT_EQ(mini_count(phone, "request"), 0U);
  EXPECT_EQ(mini_count(phone, "log from elsewhere"), 1U);
}

TEST_F(Border, InsideAFunctionOfThePhoneOnlyAnswersAreTaken) {
  struct Eager {
    orlan_phone* handle = nullptr;
    std::vector<orlan_status> seen;
  } eager;
  orlan_loop_functions loop{};
  loop.struct_size = sizeof loop;
  loop.context = &eager;
  loop.post = [](void* context, orlan_id task) {
    auto& self = *static_cast<Eager*>(context);
    self.seen = {orlan_phone_run(self.handle, task), orlan_phone_move_to(self.handle, ORLAN_STATE_BACKGROUND),
                 orlan_refetch_geofence(), orlan_phone_answer(self.handle, 1, 0, nullptr)};
  };
  loop.post_after = [](void*, std::int64_t, orlan_id) {};
  const orlan_phone_parts parts{sizeof parts, &loop};
  ASSERT_EQ(orlan_phone_new(&parts, &eager.handle), ORLAN_OK);
  ASSERT_EQ(orlan_install(eager.handle, nullptr), ORLAN_OK);
  ASSERT_EQ(orlan_refresh_push_authorization(), ORLAN_OK);
  EXPECT_THAT(eager.seen, ElementsAre(ORLAN_BUSY, ORLAN_BUSY, ORLAN_BUSY, ORLAN_UNKNOWN));
  ASSERT_EQ(orlan_uninstall(), ORLAN_OK);
  ASSERT_EQ(orlan_phone_free(eager.handle), ORLAN_OK);
}

TEST_F(Border, PartsOfAPhoneThatCannotWorkAreRefused) {
  const orlan_loop_functions mute{sizeof mute, nullptr, nullptr, nullptr, nullptr, nullptr};
  const orlan_loop_functions loop{
      sizeof loop, nullptr, [](void*, orlan_id) {}, [](void*, std::int64_t, orlan_id) {}, nullptr, nullptr};
  orlan_store_functions half{};
  half.struct_size = sizeof half;
  half.get = [](void*, orlan_string, orlan_answer*) {};
  orlan_bundle bundle{};
  bundle.struct_size = sizeof bundle;
  bundle.info = orlan_str("{");
  orlan_phone* made = nullptr;
  const auto refusal = [&](auto change) {
    orlan_phone_parts parts{};
    parts.struct_size = sizeof parts;
    parts.loop = &loop;
    change(parts);
    const auto status = orlan_phone_new(&parts, &made);
    return std::to_string(status) + " " + orlan_last_problem();
  };
  EXPECT_EQ(refusal([](auto& parts) { parts.loop = nullptr; }),
            "3 orlan_phone_new: loop: post and post_after are needed");
  EXPECT_EQ(refusal([&](auto& parts) { parts.loop = &mute; }),
            "3 orlan_phone_new: loop: post and post_after are needed");
  EXPECT_EQ(refusal([&](auto& parts) { parts.store = &half; }),
            "3 orlan_phone_new: store: all four functions are needed");
  EXPECT_THAT(refusal([&](auto& parts) { parts.bundle = &bundle; }),
              HasSubstr("5 orlan_phone_new: bundle.info"));
  EXPECT_EQ(made, nullptr);
}

TEST_F(Border, TextsOfAnyLengthAndWithNulPassWhole) {
  install();
  const struct {
    const char* name;
    std::string text, upper;
  } rows[] = {
      {"empty", "", ""},
      {"NUL", "a\0b"s, "A\0B"s},
      {"only NUL", "\0"s, "\0"s},
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
  mini_route(
      phone, "/get-config", 200,
      R"({"configuration":{"notificationsCount":3,"daysCount":2,"batteryCount":1,"privacyText":"P"}})");
  EXPECT_EQ(orlan_fetch_configuration(true, Ear::text, &ear), ORLAN_OK);
  EXPECT_THAT(ear.heard, ElementsAre("OrlanPlugin -1")) << "refused inside the call";
  start();
  ear.heard.clear();

  // Nobody who wants to know; and one that asks again from inside.
  EXPECT_EQ(orlan_fetch_configuration(true, nullptr, nullptr), ORLAN_OK);
  ear.then = [this] {
    ear.then = nullptr;
    EXPECT_EQ(orlan_refresh_privacy_text(Ear::text, &ear), ORLAN_OK);
    EXPECT_EQ(orlan_uninstall(), ORLAN_BUSY);
    EXPECT_EQ(orlan_phone_free(phone->handle), ORLAN_BUSY);
  };
  EXPECT_EQ(orlan_fetch_configuration(true, Ear::text, &ear), ORLAN_OK);
  mini_run_for(phone, second);
  EXPECT_THAT(
      ear.heard,
      ElementsAre(R"({"notificationsCount":3,"daysCount":2,"batteryCount":1,"privacyText":"P"})", "P"));

  // The library ends before the answer: they hear of it, and find nothing installed.
  ear.heard.clear();
  phone->keeps_requests = true;
  EXPECT_EQ(orlan_refresh_privacy_text(Ear::text, &ear), ORLAN_OK);
  EXPECT_EQ(orlan_track_survey_event(orlan_str("7"), {}, orlan_str("shown"), Ear::outcome, &ear), ORLAN_OK);
  ear.then = [this] {
    EXPECT_EQ(orlan_refetch_geofence(), ORLAN_NOT_INSTALLED);
    EXPECT_EQ(orlan_install(phone->handle, nullptr), ORLAN_BUSY);
  };
  mini_run_for(phone, second);
  const orlan_id late = phone->last_call;
  EXPECT_EQ(orlan_uninstall(), ORLAN_OK);
  EXPECT_THAT(ear.heard, ElementsAre("OrlanC 1", "OrlanC 1"));
  orlan_http_reply reply{};
  reply.struct_size = sizeof reply;
  reply.status = 200;
  EXPECT_EQ(orlan_phone_http_reply(phone->handle, late, &reply), ORLAN_UNKNOWN);
  mini_run_for(phone, second);
  EXPECT_EQ(ear.heard.size(), 2U);
}

TEST_F(Border, AStartReplacesTheDelegateOfTheOneBefore) {
  install();
  Ear other;
  auto delegate = ear.delegate();
  const auto otherDelegate = other.delegate();
  phone->keeps_requests = true;
  EXPECT_EQ(orlan_start_with_api_key(orlan_str("KEY"), ORLAN_STAGING, nullptr, 0, &delegate), ORLAN_OK);
  phone->keeps_requests = false;
  delegate = {};  // it was copied
  EXPECT_EQ(orlan_start_with_api_key(orlan_str("KEY"), ORLAN_STAGING, nullptr, 0, &otherDelegate), ORLAN_OK);
  mini_run_for(phone, second);
  EXPECT_THAT(ear.heard, IsEmpty());
  EXPECT_THAT(other.heard, ElementsAre("D1 O1"));

  // A host lets its delegate go while a start is under way.
  EXPECT_EQ(orlan_start_with_api_key(orlan_str("OTHER KEY"), ORLAN_STAGING, nullptr, 0, &otherDelegate),
            ORLAN_OK);
  EXPECT_EQ(orlan_forget_plugin_delegate(), ORLAN_OK);
  mini_run_for(phone, second);
  EXPECT_EQ(other.heard.size(), 1U);
  // One that was written for an older header, without the second function; and none at all.
  auto older = ear.delegate();
  older.struct_size = offsetof(orlan_plugin_delegate, did_fail);
  EXPECT_EQ(orlan_start(ORLAN_STAGING, nullptr, 0, &older), ORLAN_OK) << "refused: there is no property list";
  EXPECT_EQ(orlan_start(ORLAN_STAGING, nullptr, 0, nullptr), ORLAN_OK);
  EXPECT_THAT(ear.heard, IsEmpty());
  auto newer = ear.delegate();
  EXPECT_EQ(orlan_start(ORLAN_STAGING, nullptr, 0, &newer), ORLAN_OK);
  EXPECT_THAT(ear.heard, ElementsAre("OrlanPlugin -1"));
}

TEST_F(Border, AStreamEndsWhenItsSubscriptionIsFreedAlsoFromInside) {
  install();
  orlan_subscription* status = nullptr;
  ASSERT_EQ(orlan_subscribe_push_authorization(Ear::integer, &ear, &status), ORLAN_OK);
  EXPECT_THAT(ear.heard, ElementsAre("0")) << "the current value inside the call";
  ear.then = [&] { orlan_subscription_free(std::exchange(status, nullptr)); };
  EXPECT_EQ(orlan_refresh_push_authorization(), ORLAN_OK);
  mini_run_for(phone, second);
  EXPECT_EQ(orlan_request_push_permission(), ORLAN_OK);
  mini_run_for(phone, second);
  EXPECT_THAT(ear.heard, ElementsAre("0", "2"));

  ear.then = nullptr;
  ASSERT_EQ(orlan_subscribe_location_authorization(Ear::integer, &ear, &status), ORLAN_OK);
  EXPECT_EQ(orlan_uninstall(), ORLAN_OK);
  orlan_subscription_free(status);
  orlan_subscription_free(nullptr);
}

TEST_F(Border, ATappedNotificationReachesTheBridgeAsItIs) {
  install();
  struct Got {
    std::string text;
  } got;
  const orlan_notification_delegate delegate{
      sizeof delegate, &got, [](void* context, const orlan_notification* notification, orlan_string action) {
        static_cast<Got*>(context)->text = copy(notification->title) + "|" + copy(notification->user_info) +
                                           "|" + std::to_string(notification->badge) + "|" + copy(action);
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
  EXPECT_EQ(
      orlan_phone_present(
          phone->handle, &tapped,
          [](void* context, std::uint32_t bits) { *static_cast<std::uint32_t*>(context) = bits; }, &shown),
      ORLAN_OK);
  EXPECT_EQ(shown, static_cast<std::uint32_t>(ORLAN_SHOW_BANNER | ORLAN_SHOW_SOUND | ORLAN_SHOW_BADGE));
  EXPECT_EQ(orlan_phone_tapped(phone->handle, &tapped, orlan_str("open"), nullptr, nullptr), ORLAN_OK);
  EXPECT_EQ(got.text, R"(Hello|{"a":[1,2.5,null]}|4|open)");
  EXPECT_EQ(orlan_bridge_set_delegate(nullptr), ORLAN_OK);
  got.text.clear();
  EXPECT_EQ(orlan_phone_tapped(phone->handle, &tapped, orlan_str("open"), nullptr, nullptr), ORLAN_OK);
  EXPECT_EQ(got.text, "");
}

TEST(PhoneHandles, AFreedPhoneIsWrongForEverAndLateAnswersAreHarmless) {
  mini_phone* const phone = mini_new();
  mini_serve(phone);
  ASSERT_EQ(orlan_install(phone->handle, nullptr), ORLAN_OK);
  phone->keeps_requests = true;
  ASSERT_EQ(orlan_start_with_api_key(orlan_str("KEY"), ORLAN_STAGING, nullptr, 0, nullptr), ORLAN_OK);
  ASSERT_EQ(orlan_uninstall(), ORLAN_OK);
  orlan_phone* const handle = phone->handle;
  const orlan_id call = phone->last_call;
  ASSERT_EQ(mini_free(phone), ORLAN_OK);
  std::thread([&] {
    EXPECT_EQ(orlan_phone_http_failed(handle, call, 0, orlan_str("late")), ORLAN_INVALID_ARGUMENT);
    EXPECT_EQ(orlan_phone_run(handle, 1), ORLAN_INVALID_ARGUMENT);
  }).join();
  EXPECT_EQ(orlan_phone_free(handle), ORLAN_INVALID_ARGUMENT);
  EXPECT_EQ(orlan_install(handle, nullptr), ORLAN_INVALID_ARGUMENT);
  EXPECT_EQ(orlan_phone_free(nullptr), ORLAN_OK);
}

}  // namespace
