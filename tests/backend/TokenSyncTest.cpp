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
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

sim::PhoneSettings registered(std::optional<std::string> lastSynced = "old") {
  sim::PhoneSettings settings;
  settings.store = {{storeKeys::deviceRegistered, true}, {storeKeys::apiKey, "K"}};
  if (lastSynced) settings.store.set(storeKeys::lastSyncedToken, *lastSynced);
  return settings;
}

TEST(TokenSync, FailuresAreLoggedAndTheTokenCountsAsUnseen) {
  struct Row {
    const char* name;
    HttpAnswer answer;
    std::string logged;
  };
  for (const auto& [name, answer, logged] :
       {Row{"refused", HttpAnswer::unreachable(),
            "WARN Token sync failed: " + urlErrors::cannotConnectToHost().description},
        Row{"not HTTP", HttpAnswer::notHttp(), "WARN Token sync failed: invalid response"},
        Row{"300", HttpAnswer::reply(300), "WARN Token sync failed with status: 300"}}) {
    Bed bed(registered());
    bed.phone.http().answer("POST", registrationPath, {answer, HttpAnswer::reply(299)});
    bed.api->updateFCMToken("new");
    EXPECT_EQ(bed.settle().back(), logged) << name;
    EXPECT_EQ(bed.phone.store().string(storeKeys::lastSyncedToken), "old") << name;
    bed.api->updateFCMToken("new");
    EXPECT_EQ(bed.settle().back(), "INFO ✅ Push token synced") << name;
    EXPECT_EQ(bed.phone.store().string(storeKeys::lastSyncedToken), "new") << name;
  }
}

TEST(TokenSync, OnlyARegisteredDeviceSyncs) {
  const std::pair<json::Object, std::size_t> rows[] = {
      {{{storeKeys::apiKey, "K"}}, 0},
      {{{storeKeys::deviceRegistered, true}}, 0},
      {{{storeKeys::apiKey, ""}, {storeKeys::deviceRegistered, true}}, 0},
      {{{storeKeys::apiKey, "K"}, {storeKeys::deviceRegistered, true}}, 1}};
  for (const auto& [store, requests] : rows) {
    sim::PhoneSettings settings;
    settings.store = store;
    Bed bed(std::move(settings));
    bed.api->updateAPNsToken("\xab\xcd");
    EXPECT_EQ(bed.tape.requests.size(), requests);
  }
}

TEST(TokenSync, TokenFromBeforeTheStartGoesOutWithTheRegistrationAndIsNotSentAgain) {
  Bed bed;
  bed.phone.http().answer("POST", registrationPath,
                          {HttpAnswer::reply(200, R"({"data":{"device_id":"D1","orlan_id":"77"}})")});
  bed.api->updateAPNsToken(std::string_view("\x00\x01\x02\xff\xfe", 5));
  bed.api->updateFCMToken("early");
  bed.api->updateFCMToken("äöüäöüäöü");
  bed.api->updateFCMToken("early");
  EXPECT_THAT(bed.tape.take(), ElementsAre("• Stored APNs token 000102ff…", "• 🔥 Stored FCM token early…",
                                           "• 🔥 Stored FCM token äöüäöüäö…", "• 🔥 Stored FCM token early…"));
  (void)bed.api->registerDevice("K", {});
  (void)bed.settle();
  EXPECT_EQ(bed.phone.store().string(storeKeys::lastSyncedToken), "early");
  (void)bed.api->registerDevice("K", {});
  bed.api->updateFCMToken("early");
  EXPECT_EQ(bed.tape.requests.size(), 1u);
  bed.api->updateFCMToken("later");
  EXPECT_EQ(bed.tape.requests.size(), 2u);
}

TEST(TokenSync, KnownDeviceSyncsATokenThatCameWhileTheProcessWasNotRegistering) {
  Bed bed(registered("pending"));
  bed.phone.http().answer("POST", registrationPath, {HttpAnswer::reply(500), HttpAnswer::reply(200)});
  bed.api->updateFCMToken("new");
  (void)bed.settle();
  (void)bed.api->registerDevice("K2", {});
  EXPECT_THAT(
      bed.settle(),
      ElementsAre("INFO 🔄 Syncing refreshed push token to backend", "POST " + registrationUrl, "response 200",
                  "store Orlan.LastSyncedDeviceToken.v1 = \"new\"", "INFO ✅ Push token synced"));
  EXPECT_EQ(bed.tape.requests.at(1).headers.at(2), (HttpHeader{"ApiKey", "K2"}));
}

TEST(TokenSync, EnvironmentOfTheLastStartCountsBeforeTheClientsOwn) {
  for (const std::string stored : {"nightly", "Nightly"}) {
    auto settings = registered();
    settings.store.set(storeKeys::environment, stored);
    Bed bed(std::move(settings));
    EXPECT_EQ(bed.api->env(), Config::Environment::staging);
    bed.api->setEnv(Config::Environment::production);
    bed.api->updateFCMToken("new");
    EXPECT_EQ(bed.tape.requests.at(0).url, "https://platform." +
                                               std::string(stored == "nightly" ? "nightly." : "") +
                                               "orlan.example" + registrationPath);
  }
}

}  // namespace
}  // namespace orlan
