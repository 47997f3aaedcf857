// Configuration, segments, correlation id and surveys: the calls that a host asks for.
#include <gtest/gtest.h>

#include "backend/Bed.hpp"
#include "orlan/backend/StoreKeys.hpp"
#include "orlan/base/Bytes.hpp"

namespace orlan {
namespace {

using sim::HttpAnswer;
using test::Bed;
using test::Events;
using test::registrationPath;
using test::registrationUrl;
using test::rule;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::IsSupersetOf;

const std::string platform = "https://platform.staging.orlan.example";
const std::string configUrl = "https://transmission.staging.orlan.example/api/get-config";
constexpr char configPath[] = "/api/get-config";

/// Listens to one answer and notes it on the tape as "deliver …".
template <class T>
Subscription note(Bed& bed, const Single<T>& answer, std::function<std::string(const T&)> text) {
  return answer.subscribe([&bed, text](const Result<T>& result) {
    EXPECT_TRUE(bed.phone.platform().main.isCurrent());
    const Error error = result ? Error{} : result.error();
    bed.tape.events.push_back(result ? "deliver " + text(*result)
                                     : "fail " + error.domain + " " + std::to_string(error.code) + " " +
                                           error.description);
  });
}
Subscription note(Bed& bed, const Single<bool>& answer) {
  return note<bool>(bed, answer, [](bool value) { return std::string(value ? "true" : "false"); });
}
Subscription note(Bed& bed, const Single<OrlanConfiguration>& answer) {
  return note<OrlanConfiguration>(
      bed, answer, [](const OrlanConfiguration& value) { return json::print(value.encode()); });
}

sim::PhoneSettings stored(json::Object store) {
  sim::PhoneSettings settings;
  settings.store = std::move(store);
  return settings;
}

const json::Object identity{{storeKeys::apiKey, "K"},
                            {storeKeys::deviceID, "D1"},
                            {storeKeys::deviceRegistered, true},
                            {storeKeys::lastSyncedToken, "old"}};

/// What every failure looks like that segments and configuration have in common.
struct Failure {
  const char* name;
  HttpAnswer answer;
  Events seen;
};
const std::vector<Failure> commonFailures{
    {"unreachable",
     HttpAnswer::unreachable(),
     {"response URLError", "ERROR HTTP Request Failed: " + urlErrors::cannotConnectToHost().description,
      "fail URLError -1004 " + urlErrors::cannotConnectToHost().description}},
    {"not HTTP",
     HttpAnswer::notHttp(),
     {"response not HTTP", "ERROR Invalid response", "fail Invalid response -1 Invalid response"}},
    {"199",
     HttpAnswer::reply(199, "{}"),
     {"response 199", "INFO HTTP Status Code: 199", "ERROR Failed with status code: 199",
      "fail Invalid response 199 Failed with status code: 199"}},
    {"300",
     HttpAnswer::reply(300, "{}"),
     {"response 300", "INFO HTTP Status Code: 300", "ERROR Failed with status code: 300",
      "fail Invalid response 300 Failed with status code: 300"}}};

/// All after the request itself.
Events afterRequest(Events events) {
  for (auto at = events.begin(); at != events.end(); ++at) {
    if (at->starts_with("POST ") || at->starts_with("GET ")) return {std::next(at), events.end()};
  }
  return {"no request"};
}

TEST(Configuration, IsFetchedLoggedAndKept) {
  const std::string answer = R"({"configuration":{"daysCount":7,"batteryCount":-1,"more":true}})";
  Bed bed(stored(identity));
  bed.phone.http().answer("GET", configPath, {HttpAnswer::reply(299, answer)});
  const auto listening = note(bed, bed.api->fetchConfiguration(false));
  const std::string kept = R"({"notificationsCount":0,"daysCount":7,"batteryCount":-1,"privacyText":""})";
  EXPECT_THAT(bed.settle(),
              ElementsAre("INFO ┌─⚙️  Fetching configuration\n│ URL: " + configUrl +
                              "\n│ Headers:\n│   Accept: application/json\n│   x-api-key: K" + rule(44),
                          "GET " + configUrl, "response 299", "INFO HTTP Status Code: 299",
                          "INFO Response body: " + answer,
                          "store Orlan.Configuration = " + json::print(json::Value(Bytes{kept})),
                          "INFO ✅ Configuration fetched and cached", "deliver " + kept));
  EXPECT_EQ(bed.tape.requests.at(0).body, std::nullopt);
  EXPECT_EQ(bed.tape.requests.at(0).timeout, std::chrono::seconds(60));

  bed.relaunch();
  const auto again = note(bed, bed.api->fetchConfiguration(false));
  EXPECT_THAT(bed.tape.take(), ElementsAre("INFO ✅ Using cached configuration", "deliver " + kept));
  EXPECT_EQ(bed.api->cachedConfiguration()->daysCount, 7);
  (void)bed.api->fetchConfiguration(true);
  EXPECT_EQ(bed.tape.requests.size(), 2u);
}

TEST(Configuration, CredentialsDecideTheHeadersAndTheApplicationsKeyIsNeverLogged) {
  const TransmissionAppCredentials app{.companyApiKey = "C",
                                       .appID = "A",
                                       .appApiKey = "SECRET",
                                       .iosBundleID = "B",
                                       .includeLegacyApiKeyHeader = false};
  auto legacy = app;
  legacy.includeLegacyApiKeyHeader = true;
  auto incomplete = app;
  incomplete.companyApiKey = "";
  incomplete.appID = "";
  const std::string scoped =
      "\n│   x-company-api-key: C\n│   x-app-id: A\n│   x-app-api-key: (redacted)\n│   x-app-identifier: B"
      "\n│   x-platform: ios";
  struct Row {
    const char* name;
    std::optional<TransmissionAppCredentials> credentials;
    std::size_t headers;
    std::string block;
  };
  for (const auto& [name, credentials, headers, block] :
       {Row{"none", {}, 2, "\n│   x-api-key: "}, Row{"incomplete", incomplete, 2, "\n│   x-api-key: "},
        Row{"complete", app, 6, scoped + "\n│   x-api-key: (disabled)"},
        Row{"with legacy header", legacy, 7, scoped + "\n│   x-api-key: C"}}) {
    Bed bed;
    bed.api->setTransmissionAuthConfig(credentials);
    (void)bed.api->fetchConfiguration(false);
    EXPECT_EQ(bed.tape.requests.at(0).headers.size(), headers) << name;
    EXPECT_EQ(bed.tape.take().at(0), "INFO ┌─⚙️  Fetching configuration\n│ URL: " + configUrl +
                                         "\n│ Headers:\n│   Accept: application/json" + block + rule(44))
        << name;
  }
}

TEST(Configuration, AFailureLeavesWhatWasKept) {
  const std::string kept = R"({"daysCount":3})";
  auto failures = commonFailures;
  failures.push_back({"no body",
                      HttpAnswer::reply(200),
                      {"response 200", "INFO HTTP Status Code: 200", "ERROR No data received",
                       "fail No data -1 No data received"}});
  for (const auto& [name, answer, seen] : failures) {
    Bed bed(stored({{storeKeys::configuration, Bytes{kept}}}));
    bed.phone.http().answer("GET", configPath, {answer});
    const auto listening = note(bed, bed.api->fetchConfiguration(true));
    EXPECT_THAT(afterRequest(bed.settle()), ElementsAreArray(seen)) << name;
    EXPECT_EQ(bed.api->cachedConfiguration()->daysCount, 3) << name;
  }
  for (const char* body : {"", "[]", R"({"configuration":{"daysCount":"7"}})", "\xff"}) {
    Bed bed(stored({{storeKeys::configuration, Bytes{kept}}}));
    bed.phone.http().answer("GET", configPath, {HttpAnswer::reply(200, body)});
    const auto listening = note(bed, bed.api->fetchConfiguration(true));
    const auto seen = bed.settle();
    ASSERT_GE(seen.size(), 2u);
    EXPECT_TRUE(seen[seen.size() - 2].starts_with("ERROR Decoding error: ")) << body;
    EXPECT_TRUE(seen.back().starts_with("fail JSON ")) << body;
    EXPECT_EQ(bed.phone.store().bytes(storeKeys::configuration), kept) << body;
  }
}

TEST(Configuration, ABodyWithoutOneMeansTheDefaults) {
  for (const char* body : {"{}", R"({"configuration":null})", R"({"configuration":{}})"}) {
    Bed bed;
    bed.phone.http().answer("GET", configPath, {HttpAnswer::reply(200, body)});
    (void)bed.api->fetchConfiguration(false);
    (void)bed.settle();
    EXPECT_EQ(bed.api->cachedConfiguration(), OrlanConfiguration::defaults()) << body;
  }
}

TEST(Configuration, AnUnreadableCacheIsFetchedAnew) {
  for (const char* kept : {"", "{", R"({"daysCount":true})"}) {
    Bed bed(stored({{storeKeys::configuration, Bytes{kept}}}));
    EXPECT_EQ(bed.api->cachedConfiguration(), std::nullopt);
    (void)bed.api->fetchConfiguration(false);
    EXPECT_TRUE(bed.tape.take().at(0).starts_with("WARN ⚠️ Failed to decode cached config: ")) << kept;
    EXPECT_EQ(bed.tape.requests.size(), 1u) << kept;
  }
}

TEST(Segments, AreSentAsAListAndStoredOnceAccepted) {
  Bed bed(stored(identity));
  bed.phone.http().answer(
      "POST", "/api/segments",
      {HttpAnswer::reply(200, "ok"), HttpAnswer::reply(204), HttpAnswer::reply(200, "\xff")});
  const auto listening = note(bed, bed.api->updateSegments({"a", "b \"c\""}));
  EXPECT_THAT(bed.settle(),
              ElementsAre("INFO ┌─🔄  Updating device segments\n│ URL: " + platform +
                              "/api/segments\n│ Headers:\n│   Content-Type: application/json\n│   ApiKey: K\n"
                              "│ Body:\n"
                              R"({"segmentation":["a","b \"c\""],"device_registered_id":"D1"})" +
                              rule(44),
                          "POST " + platform + "/api/segments", "response 200", "INFO HTTP Status Code: 200",
                          "INFO Response body: ok", R"(store Orlan.Segments = "a,b \"c\"")",
                          "INFO ✅ Segments Updated OK", "deliver true"));
  for (const char* answer : {"204", "200"}) {
    const auto none = note(bed, bed.api->updateSegments({}));
    EXPECT_THAT(afterRequest(bed.settle()),
                ElementsAre("response " + std::string(answer),
                            "INFO HTTP Status Code: " + std::string(answer), "INFO No data received",
                            "store Orlan.Segments = \"\"", "INFO ✅ Segments Updated OK", "deliver true"));
    EXPECT_EQ(bed.tape.requests.back().body, R"({"segmentation":[],"device_registered_id":"D1"})");
  }
}

TEST(Segments, AFailureLeavesTheStoredOnes) {
  for (const auto& [name, answer, seen] : commonFailures) {
    Bed bed(stored({{storeKeys::segments, "old"}}));
    bed.phone.http().answer("POST", "/api/segments", {answer});
    const auto listening = note(bed, bed.api->updateSegments({"new"}));
    EXPECT_THAT(afterRequest(bed.settle()), ElementsAreArray(seen)) << name;
    EXPECT_THAT(bed.api->segments(), ElementsAre("old")) << name;
  }
}

TEST(HostCalls, WhatCannotBeSentFailsAtOnceAndSendsNothing) {
  Bed lost(stored(identity));
  test::NowhereHttp nowhere;
  lost.api.emplace(test::with(lost.phone.platform(), nowhere), BaseUrls::builtIn(), lost.logger,
                   lost.reliability);
  const auto segments = "Invalid URL: " + platform + "/api/segments";
  const auto configuration = "Invalid URL: " + configUrl;
  const auto a = note(lost, lost.api->updateSegments({"a"}));
  const auto b = note(lost, lost.api->fetchConfiguration(false));
  lost.api->updateFCMToken("new");
  lost.api->createPluginActivity("plugin_started", "K", lost.api->env());
  lost.api->reportActivity(ActivityType::mediaViewed, 1, 2, NotificationType::notification);
  lost.api->reportGeoActivity(ActivityType::geofence_entry, 1, 2, NotificationType::geofence, 0, 0);
  EXPECT_THAT(lost.tape.take(),
              ElementsAre("ERROR " + segments, "fail URL -1 " + segments, "ERROR " + configuration,
                          "fail URL -1 " + configuration, "• 🔥 Stored FCM token new…",
                          "WARN Skipping token sync - invalid URL: " + registrationUrl,
                          "• Preparing to create plugin activity", "• Invalid URL",
                          "ERROR ❌ Geo activity failed: " + urlErrors::badURL().description));

  Bed bed;
  const auto c = note(bed, bed.api->updateSegments({"fine", "\xff"}));
  EXPECT_THAT(bed.tape.take(),
              ElementsAre("ERROR Failed to serialize JSON body",
                          "fail JSON serialization failed -1 Failed to serialize JSON body"));
  SurveyResponseRequest survey{"D1", 42, "survey_activity", {}, {{{1, "OPEN_ENDED", "\xff", {}}}}};
  const auto d = note(bed, bed.api->submitSurveyResponse(survey));
  const auto e = note(bed, bed.api->trackSurveyEvent(survey));
  EXPECT_THAT(bed.tape.take(),
              ElementsAre("ERROR Failed to encode survey request: a text is not UTF-8",
                          "ERROR SURVEY-02 ❌ Survey submission failed: a text is not UTF-8",
                          "fail JSON -1 a text is not UTF-8",
                          "ERROR Failed to encode survey request: a text is not UTF-8",
                          "ERROR SURVEY-TRACK-02 ❌ Event tracking failed: a text is not UTF-8",
                          "fail JSON -1 a text is not UTF-8"));
  EXPECT_THAT(bed.tape.requests, IsEmpty());
}

TEST(CorrelationId, IsKeptTrimmedAndSentWithTheRecordAgain) {
  Bed bed(stored(identity));
  bed.phone.http().answer("POST", registrationPath, {HttpAnswer::reply(200)});
  const Events synced{"INFO 🔄 Syncing refreshed push token to backend", "POST " + registrationUrl,
                      "response 200", "store Orlan.LastSyncedDeviceToken.v1 = \"old\"",
                      "INFO ✅ Push token synced"};
  const auto with = [&](Events first) {
    first.insert(first.end(), synced.begin(), synced.end());
    return first;
  };
  for (int round = 0; round < 2; ++round) {  // the same one again is a change too
    bed.api->setCorrelationId("\u2003 äöü-1 \n");
    EXPECT_EQ(bed.settle(),
              with({"store Orlan.CorrelationID = \"äöü-1\"", "• Stored correlation_id (5 chars)"}));
    EXPECT_NE(bed.tape.requests.back().body->find(R"("correlation_id":"äöü-1")"), std::string::npos);
  }
  EXPECT_EQ(bed.api->correlationId(), "äöü-1");
  bed.api->setCorrelationId(" \u2028");
  EXPECT_EQ(bed.settle(), with({"remove Orlan.CorrelationID", "• Cleared correlation_id"}));
  EXPECT_NE(bed.tape.requests.back().body->find(R"("correlation_id":"")"), std::string::npos);
  EXPECT_EQ(bed.api->correlationId(), std::nullopt);
}

TEST(CorrelationId, WaitsForADeviceThatIsRegisteredAndHasAToken) {
  Bed fresh(stored({{storeKeys::correlationID, " \n "}}));
  EXPECT_EQ(fresh.api->correlationId(), std::nullopt);
  fresh.api->setCorrelationId("x");
  fresh.api->clearCorrelationId();
  EXPECT_THAT(fresh.settle(),
              ElementsAre("store Orlan.CorrelationID = \"x\"", "• Stored correlation_id (1 chars)",
                          "remove Orlan.CorrelationID", "• Cleared correlation_id"));
  Bed tokenless(stored({{storeKeys::apiKey, "K"}, {storeKeys::deviceRegistered, true}}));
  tokenless.api->setCorrelationId("x");
  EXPECT_THAT(tokenless.tape.requests, IsEmpty());
}

TEST(Survey, IsPostedAndItsOutcomeLogged) {
  const SurveyResponseRequest survey{"D1", 42, "survey_activity", 7, {{{1, "RATING", "4", {}}}}};
  struct Row {
    const char* name;
    HttpAnswer answer;
    Events seen;
  };
  const std::string unreachable = urlErrors::cannotConnectToHost().description;
  const std::string badServer = urlErrors::badServerResponse().description;
  for (const auto& [name, answer, seen] :
       {Row{"accepted",
            HttpAnswer::reply(201),
            {"response 201", "INFO ┌─📬 Survey response HTTP 201", "INFO └─✅ Survey submitted successfully",
             "deliver true"}},
        Row{"refused",
            HttpAnswer::reply(400, "why"),
            {"response 400", "INFO ┌─📬 Survey response HTTP 400",
             "ERROR └─❌ Survey submission failed with status 400",
             "fail OrlanSDK 400 Survey submission failed with status 400"}},
        Row{"unreachable",
            HttpAnswer::unreachable(),
            {"response URLError", "ERROR Survey submission failed: " + unreachable,
             "fail URLError -1004 " + unreachable}},
        Row{"not HTTP", HttpAnswer::notHttp(), {"response not HTTP", "fail URLError -1011 " + badServer}}}) {
    for (const bool event : {false, true}) {
      Bed bed(stored(identity));
      bed.phone.http().answer("POST", "/api/survey-response", {answer});
      const auto listening =
          note(bed, event ? bed.api->trackSurveyEvent(survey) : bed.api->submitSurveyResponse(survey));
      auto events = bed.settle();
      EXPECT_EQ(events.at(0), "INFO ┌─📝 Submitting survey response\n│ URL: " + platform +
                                  "/api/survey-response\n│ Body:\n" + bed.tape.requests.at(0).body.value() +
                                  rule(44));
      EXPECT_THAT(afterRequest(events), ElementsAreArray(seen)) << name;
      EXPECT_THAT(bed.tape.requests.at(0).headers,
                  ElementsAre(HttpHeader{"Content-Type", "application/json"},
                              HttpHeader{"Accept", "application/json"}, HttpHeader{"ApiKey", "K"}));
    }
  }
}

}  // namespace
}  // namespace orlan
