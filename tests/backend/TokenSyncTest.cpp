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

TEST(TokenSync, SendsTheWholeRecordAgainAndRemembersTheToken) {
  auto settings = registered();
  settings.store.set(storeKeys::deviceID, "D1");
  settings.store.set(storeKeys::orlanID, "77");
  settings.store.set(storeKeys::segments, "a,,b");
  settings.store.set(storeKeys::correlationID, "person \"1\"");
  Bed bed(std::move(settings));
  bed.phone.http().answer("POST", registrationPath, {HttpAnswer::reply(204)});
  bed.api->updateFCMToken("token-123456");
  EXPECT_THAT(
      bed.settle(),
      ElementsAre("• 🔥 Stored FCM token token-12…", "INFO 🔄 Syncing refreshed push token to backend",
                  "POST " + registrationUrl, "response 204",
                  "store Orlan.LastSyncedDeviceToken.v1 = \"token-123456\"", "INFO ✅ Push token synced"));
  const auto& request = bed.tape.requests.at(0);
  EXPECT_THAT(request.headers,
              ElementsAre(HttpHeader{"Content-Type", "application/json"},
                          HttpHeader{"Accept", "application/json"}, HttpHeader{"ApiKey", "K"}));
  EXPECT_EQ(request.timeout, std::chrono::seconds(60));
  EXPECT_EQ(request.body,
            R"({"app_name":"Host","api_key":"K","sdk_version":"1.0","platform":"iOS","os_version":"17.0",)"
            R"("device_model":"Phone","device_name":"Simulated phone","manufacturer":"Apple",)"
            R"("country":"en_GB","language":"en_GB","device_id":"D1","segmentations":"a,,b",)"
            R"("correlation_id":"person \"1\"","orlan_id":"77","device_token":"token-123456"})");

  bed.api->updateFCMToken("token-123456");
  EXPECT_THAT(bed.settle(), ElementsAre("• 🔥 Stored FCM token token-12…"));
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
        Row{"hangs", HttpAnswer::reply(200).after(std::chrono::seconds(61)),
            "WARN Token sync failed: " + urlErrors::timedOut().description},
        Row{"not HTTP", HttpAnswer::notHttp(), "WARN Token sync failed: invalid response"},
        Row{"199", HttpAnswer::reply(199), "WARN Token sync failed with status: 199"},
        Row{"300", HttpAnswer::reply(300), "WARN Token sync failed with status: 300"},
        Row{"500", HttpAnswer::reply(500), "WARN Token sync failed with status: 500"}}) {
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

TEST(TokenSync, TokenUpdatesSyncOnlyForARegisteredDevice) {
  struct Row {
    const char* name;
    json::Object store;
    bool syncs;
  };
  for (const auto& [name, store, syncs] :
       {Row{"nothing stored", {}, false}, Row{"key only", {{storeKeys::apiKey, "K"}}, false},
        Row{"flag only", {{storeKeys::deviceRegistered, true}}, false},
        Row{"empty key", {{storeKeys::apiKey, ""}, {storeKeys::deviceRegistered, true}}, false},
        Row{"flag down", {{storeKeys::apiKey, "K"}, {storeKeys::deviceRegistered, false}}, false},
        Row{"flag of another type", {{storeKeys::apiKey, "K"}, {storeKeys::deviceRegistered, "true"}}, false},
        Row{"both", {{storeKeys::apiKey, "K"}, {storeKeys::deviceRegistered, true}}, true}}) {
    sim::PhoneSettings settings;
    settings.store = store;
    Bed bed(std::move(settings));
    bed.api->updateAPNsToken("\xab\xcd");
    EXPECT_EQ(bed.tape.requests.size(), syncs ? 1u : 0u) << name;
  }
}

TEST(TokenSync, TokensShowTheirFirstEightCharacters) {
  Bed bed;
  bed.api->updateAPNsToken(std::string_view("\x00\xab", 2));
  bed.api->updateAPNsToken(std::string_view("\x00\x01\x02\xff\xfe", 5));
  bed.api->updateAPNsToken("");
  bed.api->updateFCMToken("short");
  bed.api->updateFCMToken("äöüäöüäöü");
  EXPECT_THAT(bed.tape.take(), ElementsAre("• Stored APNs token 00ab…", "• Stored APNs token 000102ff…",
                                           "• Stored APNs token …", "• 🔥 Stored FCM token short…",
                                           "• 🔥 Stored FCM token äöüäöüäö…"));
}

TEST(TokenSync, TokenFromBeforeTheStartGoesOutWithTheRegistrationAndIsNotSentAgain) {
  Bed bed;
  bed.phone.http().answer("POST", registrationPath,
                          {HttpAnswer::reply(200, R"({"data":{"device_id":"D1","orlan_id":"77"}})")});
  bed.api->updateFCMToken("early");
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
  struct Row {
    std::optional<json::Value> stored;
    const char* host;
  };
  for (const auto& [stored, host] : {Row{std::nullopt, "platform.orlan.example"},
                                     Row{json::Value("nightly"), "platform.nightly.orlan.example"},
                                     Row{json::Value("development"), "platform.development.orlan.example"},
                                     Row{json::Value("Nightly"), "platform.orlan.example"},
                                     Row{json::Value(1), "platform.orlan.example"}}) {
    auto settings = registered();
    if (stored) settings.store.set(storeKeys::environment, *stored);
    Bed bed(std::move(settings));
    EXPECT_EQ(bed.api->env(), Config::Environment::staging);
    bed.api->setEnv(Config::Environment::production);
    bed.api->updateFCMToken("new");
    EXPECT_EQ(bed.tape.requests.at(0).url, "https://" + std::string(host) + registrationPath);
  }
}

}  // namespace
}  // namespace orlan
