#include <gtest/gtest.h>

#include "backend/Bed.hpp"
#include "orlan/backend/StoreKeys.hpp"

namespace orlan {
namespace {

using sim::HttpAnswer;
using test::Bed;
using test::Events;
using test::note;
using test::registrationPath;
using test::registrationUrl;
using test::rule;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

const std::string kAccepted = R"({"data":{"device_id":"D1","orlan_id":"77","more":1}})";

TEST(Registration, IsPublishedOnceStoredAndThenDelivered) {
  Bed bed;
  bed.phone.http().answer("POST", registrationPath, {HttpAnswer::reply(299, kAccepted)});
  const auto watching = bed.api->authPublisher().subscribe([&](const auto& payload) {
    bed.tape.events.push_back("publish " + payload.deviceID);
    EXPECT_TRUE(bed.api->isAuthenticated());
    EXPECT_FALSE(bed.phone.platform().main.isCurrent());
  });
  const auto single = bed.api->registerDevice("K", {"a", "b c"});
  EXPECT_FALSE(bed.api->isAuthenticated());
  const auto listening = note(bed, single);
  const auto seen = bed.settle();
  EXPECT_THAT(
      (Events{seen.end() - 5, seen.end()}),
      ElementsAre("store Orlan.Segments = \"a,b c\"", "store Orlan.LastSyncedDeviceToken.v1 = \"pending\"",
                  "publish D1", "INFO ✅ Device Registered OK", "deliver K D1 77"));
  const auto late = note(bed, single);
  EXPECT_THAT(bed.tape.take(), ElementsAre("deliver K D1 77"));
}

TEST(Registration, OfSeveralOnlyTheLastOneCounts) {
  Bed bed;
  bed.phone.http().answer("POST", registrationPath, {HttpAnswer::reply(200, kAccepted)});
  const auto first = note(bed, bed.api->registerDevice("K1", {}));
  const auto second = note(bed, bed.api->registerDevice("K2", {}));
  const auto seen = bed.settle();
  EXPECT_THAT(seen, Contains("fail URLError -999 " + urlErrors::cancelled().description));
  EXPECT_THAT(seen, Contains("deliver K2 D1 77"));
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
  const std::string number = R"({"data":{"device_id":"D","orlan_id":7}})";
  const std::string notText = "data.orlan_id: expected a string, found an integer";
  const auto timedOut = urlErrors::timedOut().description;
  const auto bad = "fail URLError -1011 " + urlErrors::badServerResponse().description;
  const std::pair<HttpAnswer, Events> rows[] = {
      {HttpAnswer::reply(200, kAccepted).after(std::chrono::hours(1)),
       {"response URLError", "ERROR HTTP request failed: " + timedOut, "fail URLError -1001 " + timedOut}},
      {HttpAnswer::notHttp(), {"response not HTTP", bad}},
      {HttpAnswer::reply(199, kAccepted), {"response 199", block(199, kAccepted), bad}},
      {HttpAnswer::reply(300), {"response 300", block(300, "<binary>"), bad}},
      {HttpAnswer::reply(200, number),
       {"response 200", block(200, number), "ERROR Decoding error: " + notText, "fail JSON -1 " + notText}}};
  for (const auto& [answer, expected] : rows) {
    Bed bed;
    bed.phone.http().answer("POST", registrationPath, {answer});
    const auto watching =
        bed.api->authPublisher().subscribe([](const auto&) { ADD_FAILURE() << "published"; });
    const auto listening = note(bed, bed.api->registerDevice("K", {"a"}));
    bed.tape.events.clear();
    EXPECT_EQ(bed.settle(), expected);
    EXPECT_TRUE(bed.phone.store().contents().empty()) << expected.front();
    EXPECT_FALSE(bed.api->isAuthenticated()) << expected.front();
  }
}

TEST(Registration, KnownDeviceAnswersFromTheStoreOnEverySubscription) {
  const std::pair<json::Object, std::string> rows[] = {
      {{{storeKeys::deviceID, "D1"}, {storeKeys::orlanID, "77"}, {storeKeys::apiKey, "other"}}, "K D1 77"},
      {{}, "K 0A-B 0"}};  // the vendor's identifier, and no number
  for (const auto& [store, payload] : rows) {
    sim::PhoneSettings settings;
    settings.store = store;
    settings.store.set(storeKeys::deviceRegistered, true);
    settings.device.vendorIdentifier = "0a-b";
    Bed bed(std::move(settings));
    const auto watching = bed.api->authPublisher().subscribe(
        [&](const auto& published) { bed.tape.events.push_back("publish " + published.deviceID); });
    const auto single = bed.api->registerDevice("K", {"ignored"});
    EXPECT_TRUE(bed.api->isAuthenticated());
    EXPECT_THAT(bed.tape.take(), IsEmpty()) << "no token: no request, nothing logged";
    for (int subscriptions = 1; subscriptions <= 2; ++subscriptions) {
      (void)note(bed, single);  // inside the call
      EXPECT_THAT(bed.tape.take(), ElementsAre(StartsWith("publish "), "deliver " + payload));
    }
    bed.api.reset();
    (void)note(bed, single);
    EXPECT_THAT(bed.tape.take(), ElementsAre("deliver " + payload));
  }
}

TEST(CredentialReset, RemovesTheIdentityOfAnotherKeyAndNothingElse) {
  sim::PhoneSettings settings;
  settings.store = {{storeKeys::apiKey, "old"},          {storeKeys::deviceID, "D1"},
                    {storeKeys::orlanID, "77"},          {storeKeys::deviceRegistered, true},
                    {storeKeys::lastSyncedToken, "tok"}, {storeKeys::segments, "a"},
                    {storeKeys::environment, "nightly"}, {storeKeys::correlationID, "c"}};
  Bed bed(std::move(settings));
  bed.api->resetCredentialsIfKeyChanged("new");
  EXPECT_THAT(bed.tape.take(),
              ElementsAre("remove Orlan.DeviceID", "remove Orlan.OrlanID", "remove Orlan.DeviceRegistered.v1",
                          "remove Orlan.APIKey", "remove Orlan.LastSyncedDeviceToken.v1",
                          "remove Orlan.Environment.v1",
                          "WARN • Cleared cached Orlan credentials (old key old ≠ new key new)"));
}

}  // namespace
}  // namespace orlan
