// Configuration, segments, correlation id and surveys: the calls that a host asks for, beyond what journeys
// show.
#include <gtest/gtest.h>

#include "backend/Bed.hpp"
#include "orlan/backend/StoreKeys.hpp"
#include "orlan/base/Bytes.hpp"

namespace orlan {
namespace {

using sim::HttpAnswer;
using test::Bed;
using test::Events;
using test::note;
using test::registrationUrl;
using test::rule;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

const std::string platform = "https://platform.staging.orlan.example";
const std::string configUrl = "https://transmission.staging.orlan.example/api/get-config";
constexpr char configPath[] = "/api/get-config";

sim::PhoneSettings stored(json::Object store) {
  sim::PhoneSettings settings;
  settings.store = std::move(store);
  return settings;
}

const json::Object identity{{storeKeys::apiKey, "K"},
                            {storeKeys::deviceID, "D1"},
                            {storeKeys::deviceRegistered, true},
                            {storeKeys::lastSyncedToken, "old"}};

/// All after the request itself.
Events afterRequest(Events events) {
  for (auto at = events.begin(); at != events.end(); ++at) {
    if (at->starts_with("POST ") || at->starts_with("GET ")) return {std::next(at), events.end()};
  }
  return {"no request"};
}

TEST(HostCalls, AFailureLeavesWhatWasKept) {
  const auto unreachable = urlErrors::cannotConnectToHost().description;
  struct Row {
    HttpAnswer answer;
    Events seen;
  };
  std::vector<Row> rows{
      {HttpAnswer::unreachable(),
       {"response URLError", "ERROR HTTP Request Failed: " + unreachable,
        "fail URLError -1004 " + unreachable}},
      {HttpAnswer::notHttp(),
       {"response not HTTP", "ERROR Invalid response", "fail Invalid response -1 Invalid response"}},
      {HttpAnswer::reply(300, "{}"),
       {"response 300", "INFO HTTP Status Code: 300", "ERROR Failed with status code: 300",
        "fail Invalid response 300 Failed with status code: 300"}},
      {HttpAnswer::reply(200),
       {"response 200", "INFO HTTP Status Code: 200", "ERROR No data received",
        "fail No data -1 No data received"}},
      {HttpAnswer::reply(200, R"({"configuration":{"daysCount":"7"}})"),
       {"response 200", "INFO HTTP Status Code: 200",
        R"(INFO Response body: {"configuration":{"daysCount":"7"}})",
        "ERROR Decoding error: configuration.daysCount: expected an integer, found a string",
        "fail JSON -1 configuration.daysCount: expected an integer, found a string"}}};
  for (std::size_t i = 0; i < rows.size(); ++i) {
    Bed bed(stored({{storeKeys::configuration, Bytes{R"({"daysCount":3})"}}, {storeKeys::segments, "old"}}));
    bed.phone.http().answer("GET", configPath, {rows[i].answer});
    bed.phone.http().answer("POST", "/api/segments", {rows[i].answer});
    const auto a = note(bed, bed.api->fetchConfiguration(true));
    EXPECT_THAT(afterRequest(bed.settle()), ElementsAreArray(rows[i].seen));
    EXPECT_EQ(bed.api->cachedConfiguration()->daysCount, 3);
    if (i > 2) continue;  // what remains is about configurations
    const auto b = note(bed, bed.api->updateSegments({"new"}));
    EXPECT_THAT(afterRequest(bed.settle()), ElementsAreArray(rows[i].seen));
    EXPECT_THAT(bed.api->segments(), ElementsAre("old"));
  }
}

TEST(HostCalls, WhatCannotBeSentFailsAtOnceAndSendsNothing) {
  Bed lost(stored(identity));
  test::NowhereHttp nowhere;
  lost.api.emplace(test::with(lost.phone.platform(), nowhere, lost.phone.platform().queues),
                   BaseUrls::builtIn(), lost.logger, *lost.reliability);
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

  sim::PhoneSettings settings = stored(identity);
  settings.store.set(storeKeys::correlationID, "\xff");
  Bed bed(std::move(settings));
  const auto c = note(bed, bed.api->updateSegments({"fine", "\xff"}));
  const SurveyResponseRequest survey{"D1", 42, "survey_activity", {}, {{{1, "OPEN_ENDED", "\xff", {}}}}};
  const auto d = note(bed, bed.api->submitSurveyResponse(survey));
  const auto e = note(bed, bed.api->trackSurveyEvent(survey));
  bed.api->createPluginActivity("\xff", "K", bed.api->env());
  bed.api->updateFCMToken("new");
  EXPECT_THAT(bed.tape.take(),
              ElementsAre("ERROR Failed to serialize JSON body",
                          "fail JSON serialization failed -1 Failed to serialize JSON body",
                          "ERROR Failed to encode survey request: a text is not UTF-8",
                          "ERROR SURVEY-02 ❌ Survey submission failed: a text is not UTF-8",
                          "fail JSON -1 a text is not UTF-8",
                          "ERROR Failed to encode survey request: a text is not UTF-8",
                          "ERROR SURVEY-TRACK-02 ❌ Event tracking failed: a text is not UTF-8",
                          "fail JSON -1 a text is not UTF-8", "• Preparing to create plugin activity",
                          "• Failed to encode body", "• 🔥 Stored FCM token new…",
                          "WARN Skipping token sync - failed to serialize body"));
  EXPECT_THAT(bed.tape.requests, IsEmpty());
}

TEST(Configuration, CredentialsDecideTheHeadersAndTheApplicationsKeyIsNeverLogged) {
  const TransmissionAppCredentials legacy{
      .companyApiKey = "C", .appID = "A", .appApiKey = "SECRET", .iosBundleID = "B"};
  auto app = legacy;
  app.includeLegacyApiKeyHeader = false;
  const std::string scoped =
      "\n│   x-company-api-key: C\n│   x-app-id: A\n│   x-app-api-key: (redacted)\n│   x-app-identifier: B"
      "\n│   x-platform: ios";
  struct Row {
    std::optional<TransmissionAppCredentials> credentials;
    std::size_t headers;
    std::string block;
  };
  for (const auto& [credentials, headers, block] :
       {Row{{}, 2, "\n│   x-api-key: "}, Row{app, 6, scoped + "\n│   x-api-key: (disabled)"},
        Row{legacy, 7, scoped + "\n│   x-api-key: C"}}) {
    Bed bed;
    bed.api->setTransmissionAuthConfig(credentials);
    EXPECT_EQ(bed.api->effectiveTransmissionCredentials("").iosBundleID,
              credentials ? "B" : "com.example.host");
    (void)bed.api->fetchConfiguration(false);
    EXPECT_EQ(bed.tape.requests.at(0).headers.size(), headers);
    EXPECT_EQ(bed.tape.take().at(0), "INFO ┌─⚙️  Fetching configuration\n│ URL: " + configUrl +
                                         "\n│ Headers:\n│   Accept: application/json" + block + rule(44));
  }
}

TEST(Configuration, IsKeptWhole) {
  Bed bed;
  const std::string answer = R"({"configuration":{"daysCount":7,"batteryCount":-1,"more":true}})";
  bed.phone.http().answer("GET", configPath, {HttpAnswer::reply(299, answer)});
  (void)bed.api->fetchConfiguration(false);
  (void)bed.settle();
  EXPECT_EQ(bed.phone.store().bytes(storeKeys::configuration),
            R"({"notificationsCount":0,"daysCount":7,"batteryCount":-1,"privacyText":""})");
  bed.relaunch();
  EXPECT_EQ(bed.api->cachedConfiguration(), (OrlanConfiguration{.daysCount = 7, .batteryCount = -1}));
}

TEST(Segments, AreStoredOnceAcceptedWhateverTheAnswerSays) {
  Bed bed(stored(identity));
  bed.phone.http().answer("POST", "/api/segments", {HttpAnswer::reply(204), HttpAnswer::reply(200, "\xff")});
  for (const auto& [tags, kept] :
       {std::pair<std::vector<std::string>, std::string>{{"a", "b,c"}, "a,b,c"}, {{}, ""}}) {
    const auto listening = note(bed, bed.api->updateSegments(tags));
    const auto seen = afterRequest(bed.settle());
    EXPECT_THAT((Events{seen.begin() + 2, seen.end()}),
                ElementsAre("INFO No data received", "store Orlan.Segments = \"" + kept + "\"",
                            "INFO ✅ Segments Updated OK", "deliver"));
  }
}

TEST(CorrelationId, IsKeptTrimmedAndSentByARegisteredDeviceWithAToken) {
  Bed bed(stored(identity));
  for (int round = 0; round < 2; ++round) {  // the same one again is a change too
    bed.api->setCorrelationId("\u2003 äöü-1 \n");
    EXPECT_THAT(bed.tape.take(),
                ElementsAre("store Orlan.CorrelationID = \"äöü-1\"", "• Stored correlation_id (5 chars)",
                            "INFO 🔄 Syncing refreshed push token to backend", "POST " + registrationUrl));
  }
  EXPECT_EQ(bed.api->correlationId(), "äöü-1");
  bed.api->setCorrelationId(" \u2028");
  EXPECT_EQ(bed.tape.requests.size(), 3u);
  EXPECT_EQ(bed.api->correlationId(), std::nullopt);

  Bed silent(stored({{storeKeys::correlationID, " \n "}, {storeKeys::deviceRegistered, true}}));
  EXPECT_EQ(silent.api->correlationId(), std::nullopt);
  silent.api->setCorrelationId("x");
  silent.api->clearCorrelationId();
  EXPECT_THAT(silent.tape.take(),
              ElementsAre("store Orlan.CorrelationID = \"x\"", "• Stored correlation_id (1 chars)",
                          "remove Orlan.CorrelationID", "• Cleared correlation_id"));
}

}  // namespace
}  // namespace orlan
