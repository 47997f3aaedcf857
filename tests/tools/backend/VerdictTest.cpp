#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "requests.hpp"
#include "tools/orlan/backend/Verdict.hpp"

namespace orlan::devbackend {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A request with one mistake, and what is said about it: exactly one problem.
struct Mistake {
  const char* name;
  Request request;
  const char* problem;
  int status = 400;
};

void expectComplaints(const std::vector<Mistake>& mistakes) {
  for (const auto& mistake : mistakes) {
    const auto verdict = judge(mistake.request);
    EXPECT_THAT(verdict.problems, ElementsAre(HasSubstr(mistake.problem))) << mistake.name;
    EXPECT_EQ(verdict.status, mistake.status) << mistake.name;
  }
}

TEST(Verdict, NothingIsWrongWithWhatAClientSends) {
  struct Row {
    const char* name;
    Request request;
    Endpoint endpoint;
  };
  for (const auto& row :
       {Row{"registration", good::registration(), Endpoint::registration},
        Row{"token sync", good::tokenSync(), Endpoint::registration},
        Row{"segments", good::segments(), Endpoint::segments},
        Row{"no segments", edited(good::segments(), R"("gold","evening")", ""), Endpoint::segments},
        Row{"activity", good::activity(), Endpoint::activities},
        Row{"activity without position", edited(edited(good::activity(), "51.5", "-1.0"), "-0.12", "-1.0"),
            Endpoint::activities},
        Row{"a value with a line break", edited(good::activity(), "device-1", "device\r\n1"),
            Endpoint::activities},
        Row{"plugin activity", good::pluginActivity(), Endpoint::pluginActivity},
        Row{"no vendor", edited(good::pluginActivity(), "9F8E7D6C-5B4A-4392-8170-6F5E4D3C2B1A", "unknown"),
            Endpoint::pluginActivity},
        Row{"survey", good::survey(), Endpoint::surveyResponse},
        Row{"survey event", good::surveyEvent(), Endpoint::surveyResponse},
        Row{"configuration", good::configuration(), Endpoint::configuration},
        Row{"legacy configuration", good::legacyConfiguration(), Endpoint::configuration},
        Row{"geofence check", good::geofenceCheck(), Endpoint::geofenceCheck},
        Row{"escaped JSON", edited(good::survey(), "survey_activity", "survey\\u005factivity"),
            Endpoint::surveyResponse}}) {
    const auto verdict = judge(row.request);
    EXPECT_EQ(verdict.endpoint, row.endpoint) << row.name;
    EXPECT_EQ(verdict.status, 200) << row.name;
    EXPECT_THAT(verdict.problems, IsEmpty()) << row.name;
  }
}

TEST(Verdict, OnlyTheTransmissionLayerHasPathsOfSeveralShapes) {
  struct Row {
    const char* target;
    std::optional<Endpoint> endpoint;
  };
  for (const auto& row :
       {Row{"/get-config", Endpoint::configuration}, Row{"/api/get-config", Endpoint::configuration},
        Row{"/api//get-config", Endpoint::configuration}, Row{"/api/check-geofence", Endpoint::geofenceCheck},
        Row{"/api//check-geofence", Endpoint::geofenceCheck}, Row{"//get-config", std::nullopt},
        Row{"/api///get-config", std::nullopt}, Row{"/get-config/", std::nullopt},
        Row{"/get-config?a=1", std::nullopt}, Row{"/api/api/segments", std::nullopt},
        Row{"/api//segments", std::nullopt}, Row{"/api/device-registered/create", std::nullopt}}) {
    EXPECT_EQ(endpointOf(row.target), row.endpoint) << row.target;
  }
}

TEST(Verdict, TellsWrongAddressesFromWrongMethods) {
  auto lost = good::segments();
  lost.target = "/api/segment\n";
  auto got = good::segments();
  got.method = "GET";
  expectComplaints(
      {{"unknown path", lost, R"(no such endpoint "/api/segment\n"; there are /api/device-registerd)", 404},
       {"wrong method", got, R"(method: expected POST, found "GET")", 405}});
}

TEST(Verdict, HeadersMustBeThoseOfTheOperation) {
  auto swapped = good::segments();
  std::swap(swapped.headers[1], swapped.headers[2]);
  auto twice = good::segments();
  twice.headers.emplace_back("ApiKey", "key-1");
  auto spelled = good::segments();
  spelled.headers[2].first = "apikey";
  auto withBody = good::legacyConfiguration();
  withBody.body = "{}";
  expectComplaints({
      {"order", swapped, "headers: expected in the order Content-Type, ApiKey, found ApiKey, Content-Type"},
      {"twice", twice, "header ApiKey: sent 2 times"},
      {"spelling", spelled, R"(header ApiKey: spelled "apikey")"},
      {"content type", withHeader(good::segments(), "Content-Type", "application/json; charset=utf-8"),
       R"(header Content-Type: expected "application/json", found "application/json; charset=utf-8")"},
      {"accept added", withHeader(good::segments(), "Accept", "*/*"), R"(header "Accept": does not belong)"},
      {"accept missing", withoutHeader(good::survey(), "Accept"), "header Accept: missing"},
      {"expect", withHeader(good::activity(), "Expect", "100-continue"),
       R"(header "Expect": does not belong)"},
      {"key of the other family", withHeader(good::segments(), "x-app-api-key", "s"),
       R"("x-app-api-key": does not)"},
      {"body of a get", withBody, "body: expected none"},
  });
}

TEST(Verdict, NobodyAsksWithoutAKey) {
  expectComplaints({
      {"empty platform key", withHeader(good::segments(), "ApiKey", ""), "header ApiKey: empty", 401},
      {"no platform key", withoutHeader(good::segments(), "ApiKey"), "header ApiKey: missing", 401},
      {"empty legacy key", withHeader(good::legacyConfiguration(), "x-api-key", ""),
       "header x-api-key: empty", 401},
      {"no transmission key", withoutHeader(good::legacyConfiguration(), "x-api-key"), "x-api-key: missing",
       401},
  });
}

TEST(Verdict, AppScopedHeadersComeAllOrNotAtAll) {
  auto early = good::configuration();
  std::swap(early.headers[2], early.headers.back());  // the legacy header before the others
  expectComplaints({
      {"one missing", withoutHeader(good::geofenceCheck(), "x-app-id"), "header x-app-id: missing"},
      {"one empty", withHeader(good::geofenceCheck(), "x-app-api-key", ""), "header x-app-api-key: empty"},
      {"platform", withHeader(good::geofenceCheck(), "x-platform", "iOS"),
       R"(x-platform: expected "ios", found "iOS")"},
      {"legacy differs", withHeader(good::configuration(), "x-api-key", "other"),
       "differs from x-company-api-key"},
      {"legacy early", early, "headers: expected in the order Accept, x-company-api-key"},
  });
}

TEST(Verdict, TheDeviceRecordHasFifteenTexts) {
  const auto base = good::registration();
  expectComplaints({
      {"missing", edited(base, R"("os_version":"17.0",)", ""), "body.os_version: missing"},
      {"more", edited(base, R"("app_name")", R"("locale":"de","app_name")"), R"(body: unknown key "locale")"},
      {"twice", edited(base, R"("app_name")", R"("app_name":"x","app_name")"), "body.app_name: there twice"},
      {"number", edited(base, R"("orlan_id":"0")", R"("orlan_id":0)"),
       "body.orlan_id: expected a string, found an integer"},
      {"null", edited(base, R"("correlation_id":"")", R"("correlation_id":null)"),
       "expected a string, found null"},
      {"platform", edited(base, R"("iOS")", R"("ios")"), R"(body.platform: expected "iOS", found "ios")"},
      {"language", edited(base, R"("language":"en_GB")", R"("language":"en")"),
       R"(body.language: expected "en_GB")"},
      {"other key", edited(base, "key-1", "key-2"), "body.api_key: differs from the header ApiKey"},
      {"token", edited(base, "pending", ""), "body.device_token: empty"},
      {"device", edited(base, "9F8E7D6C", "9f8e7d6c"), "body.device_id: expected an upper-case UUID"},
      {"array", edited(base, base.body, "[]"), "body: expected an object, found an array"},
      {"broken", edited(base, "}", ""), "body: not JSON"},
      {"empty", edited(base, base.body, ""), "body: empty"},
  });
}

TEST(Verdict, SegmentsAreAListOfTexts) {
  expectComplaints({
      {"plural", edited(good::segments(), "\"segmentation\":[\"gold\",\"evening\"],", ""),
       "body.segmentation: missing"},
      {"joined", edited(good::segments(), R"(["gold","evening"])", R"("gold,evening")"),
       "expected an array, found a string"},
      {"number", edited(good::segments(), R"("evening")", "3"), "body.segmentation[1]: expected a string"},
      {"no device", edited(good::segments(), "device-1", ""), "body.device_registered_id: empty"},
  });
}

TEST(Verdict, TheGeofenceQuestionHasItsPositionAsShortestText) {
  const auto base = good::geofenceCheck();
  expectComplaints({
      {"number", edited(base, R"("51.0")", "51.0"),
       "body.latitude: expected a string, found a number with a fraction"},
      {"integral", edited(base, "51.0", "51"),
       R"(body.latitude: expected the shortest text "51.0", found "51")"},
      {"long", edited(base, "-0.12", "-0.120"), R"(body.longitude: expected the shortest text "-0.12")"},
      {"no number", edited(base, "51.0", "nan"),
       R"(body.latitude: expected degrees as decimal text, found "nan")"},
      {"beyond", edited(base, "51.0", "90.5"), "body.latitude: expected -90 to 90 degrees"},
      {"distance", edited(base, "10", "11"), "body.distance: expected 10, found 11"},
      {"distance as text", edited(base, "10", R"("10")"),
       "body.distance: expected an integer, found a string"},
      {"distance with fraction", edited(base, "10", "10.0"),
       "body.distance: expected an integer, found a number with"},
      {"no tags", edited(base, R"("segmentationTags":"",)", ""), "body.segmentationTags: missing"},
  });
}

TEST(Verdict, SurveyAnswersMustBeAnswers) {
  const auto base = good::survey();
  expectComplaints({
      {"identifier as text", edited(base, ":42", R"(:"42")"), "curated_notification_id: expected an integer"},
      {"null location", edited(base, R"("location_id":7)", R"("location_id":null)"),
       "expected an integer, found null"},
      {"activity", edited(base, "survey_activity", "survey_shown"),
       R"(body.activity: expected "survey_activity")"},
      {"no answers", edited(good::surveyEvent(), R"("survey_shown")", R"("survey_activity","responses":[])"),
       "body.responses: empty"},
      {"camel case", edited(base, R"("choice_id")", R"("choiceId":3,"choice_id")"),
       R"(body.responses[1].choice[0]: unknown key "choiceId")"},
      {"unknown type", edited(base, "RATING", "STARS"),
       R"(body.responses[0].type: unknown question type "STARS")"},
      {"rating", edited(base, R"("4")", R"("6")"), "body.responses[0].value: expected a rating from 1 to 5"},
      {"no choice", edited(base, R"({"choice_id":11})", ""),
       "body.responses[1].choice: expected at least one"},
      {"boolean", edited(base, R"("RATING","value":"4")", R"("BOOLEAN","value":"y")"),
       "expected true, false, yes or no"},
      {"blank", edited(base, R"("RATING","value":"4")", R"("OPEN_ENDED","value":" \n")"), "[0].value: blank"},
      {"no object", edited(base, R"({"choice_id":11})", "11"),
       "choice[0]: expected an object, found an integer"},
  });
}

TEST(Verdict, PluginActivitiesAreNotEscaped) {
  const auto base = good::pluginActivity();
  expectComplaints({
      {"escaped", edited(base, " 09:26:53", "%2009%3A26%3A53"),
       "body, time: expected yyyy-MM-dd HH:mm:ss unescaped"},
      {"order", edited(base, "device_registered_id=", "activity="),
       "body: expected device_registered_id=…&time=…&activity=…"},
      {"vendor", edited(base, "9F8E7D6C", "device"), "expected the vendor's UUID or unknown"},
      {"no activity", edited(base, "plugin_started", ""), "body, activity: empty"},
      {"no such day", edited(base, "03-14", "02-30"), "body, time: expected"},
  });
}

TEST(Verdict, ABodyThatBrokeOffIsNotReadAsIfItWereWhole) {
  auto broken = good::segments();
  broken.isWhole = false;
  expectComplaints({{"broken off", broken, "body: too large, or broken off"}});
}

}  // namespace
}  // namespace orlan::devbackend
