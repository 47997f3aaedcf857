// Mistakes, texts, completions and delegates at the border between a host in C and the library.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
using orlan::test::delegateFor;
using orlan::test::Ear;
using orlan::test::hears;
using orlan::test::TablesOverSimulated;
using orlan::test::textFrom;

constexpr auto anHour = std::chrono::hours(1);
constexpr char registration[] = "/api/device-registerd/create";

/// Which mistake a call was said to be.
void refused(const char* words, orlan_status status, orlan_status expected = ORLAN_INVALID_ARGUMENT) {
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
    const auto delegate = delegateFor(ear);
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
  refused("orlan_start: orlan_install comes first", orlan_start(0, nullptr, 0, nullptr), ORLAN_NOT_INSTALLED);
  refused("there is no such phone", orlan_install(nullptr, nullptr));
  refused("base_urls: ", orlan_install(host.handle, &options));
  url = {9, ORLAN_PLATFORM_API, orlan_str("https://a.example")};
  refused("no such environment", orlan_install(host.handle, &options));
  install();
  refused("a phone is installed already", orlan_install(host.handle, nullptr), ORLAN_BUSY);
  refused("the phone is installed", orlan_phone_free(host.handle), ORLAN_BUSY);
  refused("api_key: not UTF-8", orlan_start_with_api_key(broken, 0, nullptr, 0, nullptr), ORLAN_NOT_UTF8);
  refused("segmentations is NULL", orlan_start(0, nullptr, 2, nullptr));
  refused("struct_size is not set", orlan_start(0, nullptr, 0, &sizeless));
  refused("data is NULL", orlan_update_fcm_token({nullptr, 3}));
  refused("upper is NULL", orlan_transform(key, nullptr));
  refused("text: not UTF-8", orlan_transform(broken, &text), ORLAN_NOT_UTF8);
  refused("handler is NULL", orlan_subscribe_polygons(nullptr, nullptr, &subscription));
  refused("subscription is NULL", orlan_subscribe_location_authorization(hears, &ear, nullptr));
  refused("no such kind", orlan_subscribe_crossings(7, hears, &ear, &subscription));
  refused("no such level", orlan_log(9, key));
  refused("no such activity", orlan_report_notification(7, 0, 0, 0));
  refused("answers: ", orlan_submit_survey_response(key, {}, orlan_str("[1,"), hears, &ear), ORLAN_NOT_JSON);
  refused("user_info: not a JSON object", orlan_send_test_notification_with_payload(orlan_str("[]")),
          ORLAN_NOT_JSON);
  refused("fixes is NULL", orlan_phone_fixes(host.handle, 0, nullptr, 1));
  refused("no such signal", orlan_phone_signal(host.handle, 9));
  refused("no such state", orlan_phone_move_to(host.handle, -1));
  refused("reply: struct_size", orlan_phone_http_reply(host.handle, 1, &reply));
  EXPECT_THAT(ear.heard, IsEmpty());
  EXPECT_EQ(subscription, nullptr);
  EXPECT_THAT(host.seen.after("request "), IsEmpty());
}

TEST_F(Border, AnotherThreadDoesOnlyWhatAnyThreadMay) {
  install();
  orlan_subscription* status = nullptr;
  ASSERT_EQ(orlan_subscribe_location_authorization(hears, &ear, &status), ORLAN_OK);
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
    void look(orlan_id task) {
      seen = {orlan_phone_run(handle, task), orlan_phone_move_to(handle, ORLAN_STATE_BACKGROUND),
              orlan_refetch_geofence(), orlan_phone_answer(handle, 1, 0, nullptr)};
    }
  } eager;
  const orlan_loop_functions loop{sizeof loop, &eager,
                                  [](void* self, orlan_id task) { static_cast<Eager*>(self)->look(task); },
                                  [](auto...) {}};
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
  const orlan_loop_functions loop{sizeof loop, nullptr, [](auto...) {}, [](auto...) {}};
  const orlan_store_functions half{sizeof half, nullptr, [](auto...) {}};
  const orlan_bundle bundle{sizeof bundle, {}, orlan_str("{")};
  orlan_phone* made = nullptr;
  orlan_phone_parts parts{sizeof parts};
  refused("post and post_after are needed", orlan_phone_new(&parts, &made));
  parts.loop = &mute;
  refused("post and post_after are needed", orlan_phone_new(&parts, &made));
  parts.loop = &loop;
  parts.store = &half;
  refused("store: all four functions are needed", orlan_phone_new(&parts, &made));
  parts.store = nullptr;
  parts.bundle = &bundle;
  refused("bundle.info", orlan_phone_new(&parts, &made), ORLAN_NOT_JSON);
  EXPECT_EQ(made, nullptr);
}

TEST_F(Border, TextsOfAnyLengthAndWithNulPassWhole) {
  install();
  const std::pair<std::string, std::string> rows[] = {
      {"a\0b"s, "A\0B"s},
      {"straße 🔔", "STRASSE 🔔"},
      {std::string(1'000'000, 'x'), std::string(1'000'000, 'X')},
  };
  for (const auto& [text, upper] : rows) {
    const orlan_string lent{text.data(), text.size()};
    EXPECT_EQ(textFrom([&](orlan_string* out) {
                const auto status = orlan_transform(lent, out);
                EXPECT_EQ(out->data[out->length], '\0');
                return status;
              }),
              upper);
  }
  orlan_string none{};
  ASSERT_EQ(orlan_current_configuration(&none), ORLAN_OK);
  EXPECT_EQ(none.data, nullptr);
}

TEST_F(Border, CompletionsComeOnceWhateverHappens) {
  install();
  const std::string configuration =
      R"({"notificationsCount":3,"daysCount":2,"batteryCount":1,"privacyText":"P"})";
  host.answer("/api/get-config", HttpAnswer::reply(200, R"({"configuration":)" + configuration + "}"));
  EXPECT_EQ(orlan_fetch_configuration(true, hears, &ear), ORLAN_OK);
  EXPECT_THAT(ear.heard, ElementsAre("- OrlanPlugin -1")) << "refused inside the call";
  start();
  ear.heard.clear();

  // Nobody who wants to know; and one that asks again from inside.
  EXPECT_EQ(orlan_fetch_configuration(true, nullptr, nullptr), ORLAN_OK);
  ear.then = [this] {
    ear.then = nullptr;
    EXPECT_EQ(orlan_refresh_privacy_text(hears, &ear), ORLAN_OK);
  };
  EXPECT_EQ(orlan_fetch_configuration(true, hears, &ear), ORLAN_OK);
  host.pass();
  EXPECT_THAT(ear.heard, ElementsAre(configuration + " -", "P -"));

  // The library ends before the answer: they hear of it, and find nothing installed.
  ear.heard.clear();
  host.answer("/api/get-config", HttpAnswer::reply(200).after(anHour));
  host.answer("/api/survey-response", HttpAnswer::reply(200).after(anHour));
  EXPECT_EQ(orlan_refresh_privacy_text(hears, &ear), ORLAN_OK);
  EXPECT_EQ(orlan_track_survey_event(orlan_str("7"), {}, orlan_str("shown"), hears, &ear), ORLAN_OK);
  ear.then = [this] {
    EXPECT_EQ(orlan_refetch_geofence(), ORLAN_NOT_INSTALLED);
    EXPECT_EQ(orlan_install(host.handle, nullptr), ORLAN_BUSY);
  };
  host.pass();
  EXPECT_EQ(orlan_uninstall(), ORLAN_OK);
  const orlan_http_reply reply{sizeof reply, 200};
  EXPECT_EQ(orlan_phone_http_reply(host.handle, host.lastCall, &reply), ORLAN_UNKNOWN);
  host.pass();
  EXPECT_THAT(ear.heard, ElementsAre("0 OrlanC 1", "- OrlanC 1"));
}

TEST_F(Border, AStartReplacesTheDelegateOfTheOneBeforeUnlessItIsRefused) {
  install();
  Ear other;
  auto delegate = delegateFor(ear);
  const auto otherDelegate = delegateFor(other);
  EXPECT_EQ(begin(&otherDelegate), ORLAN_OK);
  EXPECT_EQ(begin(&delegate), ORLAN_OK);
  delegate = {};  // it was copied
  // Refused, as there is no property list: by one that hears of it; by one that was written for an older
  // header, without the second function; by none at all.
  auto older = delegateFor(other);
  older.struct_size = offsetof(orlan_plugin_delegate, did_fail);
  EXPECT_EQ(orlan_start(ORLAN_STAGING, nullptr, 0, &otherDelegate), ORLAN_OK);
  EXPECT_EQ(orlan_start(ORLAN_STAGING, nullptr, 0, &older), ORLAN_OK);
  EXPECT_EQ(orlan_start(ORLAN_STAGING, nullptr, 0, nullptr), ORLAN_OK);
  EXPECT_THAT(other.heard, ElementsAre("OrlanPlugin -1"));
  host.pass();
  EXPECT_THAT(ear.heard, ElementsAre("D1 O1")) << "the refused ones changed nothing";

  // A host lets its delegate go while a start is under way.
  EXPECT_EQ(begin(&otherDelegate, "OTHER KEY"), ORLAN_OK);
  EXPECT_EQ(orlan_forget_plugin_delegate(), ORLAN_OK);
  host.pass();
  EXPECT_EQ(other.heard.size(), 1U);
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
