#include <gtest/gtest.h>

#include "backend/Bed.hpp"
#include "orlan/backend/StoreKeys.hpp"

namespace orlan {
namespace {

using sim::HttpAnswer;
using test::Bed;
using test::Events;
using test::registrationPath;
using test::registrationUrl;
using test::rule;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kAccepted = R"({"data":{"device_id":"D1","orlan_id":"77","more":1}})";

/// Holds what a registration answered, and on which turn.
struct Answered {
  explicit Answered(const Single<APIService::AuthPayload>& single)
      : subscription(single.subscribe([this](const auto& answer) { answers.push_back(answer); })) {}
  std::vector<Result<APIService::AuthPayload>> answers;
  Subscription subscription;
};

TEST(Registration, IsPublishedOnceStoredAndThenDelivered) {
  Bed bed;
  bed.phone.http().answer("POST", registrationPath, {HttpAnswer::reply(299, kAccepted)});
  const APIService::AuthPayload expected{"K", "D1", "77"};
  const auto watching = bed.api->authPublisher().subscribe([&](const auto& payload) {
    bed.tape.events.emplace_back("publish");
    EXPECT_EQ(payload, expected);
    EXPECT_TRUE(bed.api->isAuthenticated());
    EXPECT_FALSE(bed.phone.platform().main.isCurrent());
  });
  const auto single = bed.api->registerDevice("K", {"a", "b c"});
  EXPECT_FALSE(bed.api->isAuthenticated());
  const auto subscription = single.subscribe([&](const auto&) {
    bed.tape.events.emplace_back("deliver");
    EXPECT_TRUE(bed.phone.platform().main.isCurrent());
  });
  const auto seen = bed.settle();
  EXPECT_THAT(
      (Events{seen.end() - 5, seen.end()}),
      ElementsAre("store Orlan.Segments = \"a,b c\"", "store Orlan.LastSyncedDeviceToken.v1 = \"pending\"",
                  "publish", "INFO ✅ Device Registered OK", "deliver"));
  EXPECT_EQ(Answered(single).answers.at(0).value(), expected) << "a late subscriber hears it too";
}

TEST(Registration, OfSeveralOnlyTheLastOneCounts) {
  Bed bed;
  bed.phone.http().answer("POST", registrationPath, {HttpAnswer::reply(200, kAccepted)});
  const Answered first(bed.api->registerDevice("K1", {}));
  const Answered second(bed.api->registerDevice("K2", {}));
  (void)bed.settle();
  ASSERT_FALSE(first.answers.at(0));
  EXPECT_EQ(first.answers[0].error(), urlErrors::cancelled());
  EXPECT_EQ(second.answers.at(0).value().apiKey, "K2");
  EXPECT_EQ(bed.phone.store().string(storeKeys::apiKey), "K2");
}

TEST(Registration, WhatThePhoneDoesNotSayHasItsStandIn) {
  sim::PhoneSettings settings;
  settings.device.vendorIdentifier.reset();
  settings.device.info = {{"CFBundleName", 7}};
  settings.store = {{storeKeys::correlationID, "person-1"}};
  Bed bed(std::move(settings));
  bed.api->updateAPNsToken(std::string_view("\x00\xab", 2));
  (void)bed.api->registerDevice("K", {});
  const auto sent = json::parse(bed.tape.requests.at(0).body.value());
  ASSERT_TRUE(sent);
  const auto& record = *sent->object();
  auto text = [&](std::string_view key) { return *record.find(key)->string(); };
  EXPECT_EQ(record.size(), 15u);
  EXPECT_EQ(text("app_name"), "Unknown");
  EXPECT_EQ(text("sdk_version"), "0");
  EXPECT_EQ(text("correlation_id"), "person-1");
  EXPECT_EQ(text("device_token"), "00ab");
  EXPECT_THAT(text("device_id"),
              testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[0-9A-F]{4}-[0-9A-F]{12}"));
}

TEST(Registration, EveryFailureIsDeliveredOnceAndStoresNothing) {
  const auto block = [](int status, const std::string& shown) {
    return "INFO ┌─📬  HTTP " + std::to_string(status) + "\n│ Headers:\n\n│ Raw body:\n" + shown + rule(44);
  };
  struct Row {
    const char* name;
    HttpAnswer answer;
    std::int64_t code;  // 0: a decoding error
    Events logged;
  };
  for (const auto& [name, answer, code, logged] :
       {Row{"hangs",
            HttpAnswer::reply(200, kAccepted).after(std::chrono::hours(1)),
            -1001,
            {"ERROR HTTP request failed: " + urlErrors::timedOut().description}},
        Row{"not HTTP", HttpAnswer::notHttp(), -1011, {}},
        Row{"199", HttpAnswer::reply(199, kAccepted), -1011, {block(199, kAccepted)}},
        Row{"300 without body", HttpAnswer::reply(300), -1011, {block(300, "<binary>")}},
        Row{"no body", HttpAnswer::reply(200), 0, {block(200, "<binary>")}},
        Row{"a number",
            HttpAnswer::reply(200, R"({"data":{"device_id":"D","orlan_id":7}})"),
            0,
            {block(200, R"({"data":{"device_id":"D","orlan_id":7}})")}}}) {
    Bed bed;
    bed.phone.http().answer("POST", registrationPath, {answer});
    int published = 0;
    const auto watching = bed.api->authPublisher().subscribe([&](const auto&) { ++published; });
    const Answered answered(bed.api->registerDevice("K", {"a"}));
    auto expected = logged;
    bed.tape.events.clear();
    auto events = bed.settle();
    ASSERT_EQ(answered.answers.size(), 1u) << name;
    ASSERT_FALSE(answered.answers[0]) << name;
    const auto& error = answered.answers[0].error();
    if (code == 0) {
      expected.push_back("ERROR Decoding error: " + error.description);
      EXPECT_EQ(error.domain, "JSON") << name;
    } else {
      EXPECT_EQ(error.domain, "URLError") << name;
      EXPECT_EQ(error.code, code) << name;
    }
    ASSERT_FALSE(events.empty()) << name;
    events.erase(events.begin());  // the response itself
    EXPECT_EQ(events, expected) << name;
    EXPECT_TRUE(bed.phone.store().contents().empty()) << name;
    EXPECT_FALSE(bed.api->isAuthenticated()) << name;
    EXPECT_EQ(published, 0) << name;
  }
}

TEST(Registration, KnownDeviceAnswersFromTheStoreOnEverySubscription) {
  sim::PhoneSettings settings;
  settings.store = {{storeKeys::deviceRegistered, true},
                    {storeKeys::deviceID, "D1"},
                    {storeKeys::orlanID, "77"},
                    {storeKeys::apiKey, "other"},
                    {storeKeys::lastSyncedToken, "pending"}};
  Bed bed(std::move(settings));
  int published = 0;
  const auto watching = bed.api->authPublisher().subscribe([&](const auto&) { ++published; });
  const auto single = bed.api->registerDevice("K", {"ignored"});
  EXPECT_TRUE(bed.api->isAuthenticated());
  EXPECT_EQ(published, 0);
  for (int subscriptions = 1; subscriptions <= 2; ++subscriptions) {
    const Answered answered(single);  // inside the call
    ASSERT_EQ(answered.answers.size(), 1u);
    EXPECT_EQ(answered.answers[0].value(), (APIService::AuthPayload{"K", "D1", "77"}));
    EXPECT_EQ(published, subscriptions);
  }
  EXPECT_THAT(bed.settle(), IsEmpty());  // no token: no request, nothing logged

  bed.api.reset();
  const Answered afterwards(single);
  EXPECT_EQ(afterwards.answers.size(), 1u);
  EXPECT_EQ(published, 2);
}

TEST(Registration, KnownDeviceWithoutStoredIdentifiersUsesTheVendorsAndZero) {
  sim::PhoneSettings settings;
  settings.store = {{storeKeys::deviceRegistered, true}};
  settings.device.vendorIdentifier = "0a-b";
  Bed bed(std::move(settings));
  const Answered answered(bed.api->registerDevice("K", {}));
  EXPECT_EQ(answered.answers.at(0).value(), (APIService::AuthPayload{"K", "0A-B", "0"}));
}

TEST(CredentialReset, RemovesTheIdentityOfAnotherKeyAndNothingElse) {
  for (const char* key : {"old", "new"}) {
    sim::PhoneSettings settings;
    settings.store = {{storeKeys::apiKey, "old"},
                      {storeKeys::deviceID, "D1"},
                      {storeKeys::orlanID, "77"},
                      {storeKeys::deviceRegistered, true},
                      {storeKeys::lastSyncedToken, "tok"},
                      {storeKeys::environment, "nightly"},
                      {storeKeys::segments, "a"},
                      {storeKeys::correlationID, "c"},
                      {storeKeys::configuration, Bytes{"{}"}}};
    Bed bed(std::move(settings));
    bed.api->resetCredentialsIfKeyChanged(key);
    const bool another = key == std::string("new");
    EXPECT_EQ(bed.tape.take(),
              another ? Events({"remove Orlan.DeviceID", "remove Orlan.OrlanID",
                                "remove Orlan.DeviceRegistered.v1", "remove Orlan.APIKey",
                                "remove Orlan.LastSyncedDeviceToken.v1", "remove Orlan.Environment.v1",
                                "WARN • Cleared cached Orlan credentials (old key old ≠ new key new)"})
                      : Events());
    bed.api->resetCredentialsIfKeyChanged("third");
    EXPECT_EQ(bed.tape.take().size(), another ? 0u : 7u) << "a first start forgets nothing";
  }
}

}  // namespace
}  // namespace orlan
