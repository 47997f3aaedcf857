#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "requests.hpp"
#include "tools/orlan/backend/Verdict.hpp"

namespace orlan::devbackend {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(Verdict, NothingIsWrongWithWhatAClientSends) {
  using enum Endpoint;
  struct Row {
    std::string request;
    Endpoint endpoint;
  };
  const auto uuid = "9F8E7D6C-5B4A-4392-8170-6F5E4D3C2B1A";
  for (const auto& row :
       {Row{good::registration, registration},
        Row{edited(edited(good::registration, uuid, "device-7"), R"("0")", R"("1001")"), registration},
        Row{good::segments, segments}, Row{edited(good::segments, R"("gold","evening")", ""), segments},
        Row{good::activity, activities},
        Row{edited(edited(good::activity, "51.5", "-1.0"), "-0.12", "-1.0"), activities},
        Row{edited(good::activity, "device-1", "device\r\n1"), activities},
        Row{good::pluginActivity, pluginActivity},
        Row{edited(good::pluginActivity, uuid, "unknown"), pluginActivity},
        Row{edited(good::pluginActivity, "plugin_started", "a&activity=b&time=c"), pluginActivity},
        Row{good::survey, surveyResponse},
        Row{edited(good::survey, "survey_activity", "survey\\u005factivity"), surveyResponse},
        Row{"POST /api/survey-response\nContent-Type: application/json\nAccept: application/json\nApiKey: "
            "k\n\n"
            R"({"device_registered_id":"d","curated_notification_id":42,"activity":"survey_shown"})",
            surveyResponse},
        Row{good::configuration, configuration}, Row{good::legacyConfiguration, configuration},
        Row{good::geofenceCheck, geofenceCheck}}) {
    const auto verdict = judge(requestOf(row.request));
    EXPECT_EQ(verdict.endpoint, row.endpoint) << row.request;
    EXPECT_EQ(verdict.status, 200) << row.request;
    EXPECT_THAT(verdict.problems, IsEmpty()) << row.request;
  }
}

TEST(Verdict, OnlyTheTransmissionLayerHasPathsOfSeveralShapes) {
  struct Row {
    const char* target;
    std::optional<Endpoint> endpoint;
  };
  for (const auto& row :
       {Row{"/api/check-geofence", Endpoint::geofenceCheck}, Row{"/api//get-config", Endpoint::configuration},
        Row{"//get-config", {}}, Row{"/api///get-config", {}}, Row{"/get-config/", {}},
        Row{"/get-config?a=1", {}}, Row{"/api/api/segments", {}}, Row{"/api//segments", {}}}) {
    EXPECT_EQ(endpointOf(row.target), row.endpoint) << row.target;
  }
}

TEST(Verdict, EveryMistakeIsNamedAloneAndWithItsPlace) {
  const std::string edge(good::boundary);
  const std::string lead = "--" + edge + "\r\nContent-Disposition: form-data; name=";
  struct Row {
    const std::string& request;
    std::string from, to, problem;
    int status = 400;
  };
  const Row rows[] = {
      // Addresses and headers.
      {good::segments, "segments", "segment\t", R"(no such endpoint "/api/segment\t"; there are /api/dev)",
       404},
      {good::segments, "POST", "GET", R"(method: expected POST, found "GET")", 405},
      {good::segments, "Content-Type: application/json\nApiKey: key-1",
       "ApiKey: key-1\nContent-Type: application/json",
       "headers: expected in the order Content-Type, ApiKey"},
      {good::segments, "ApiKey: key-1", "ApiKey: key-1\nApiKey: key-1", "header ApiKey: sent 2 times"},
      {good::segments, "ApiKey", "apikey", R"(header ApiKey: spelled "apikey")"},
      {good::segments, "application/json", "application/json; charset=utf-8",
       R"(header Content-Type: expected application/json, found "application/json; charset=utf-8")"},
      {good::survey, "Accept: application/json\n", "", "header Accept: missing"},
      {good::activity, "ApiKey: key-1", "ApiKey: key-1\nExpect: 100-continue",
       R"("Expect": does not belong)"},
      {good::segments, "\n\n", "\nx-app-api-key: s\n\n", R"("x-app-api-key": does not belong)"},
      {good::segments, "ApiKey: key-1", "ApiKey: ", R"(header ApiKey: expected some text, found "")", 401},
      {good::segments, "ApiKey: key-1\n", "", "header ApiKey: missing", 401},
      {good::legacyConfiguration, "x-api-key: key-1\n", "", "header x-api-key: missing", 401},
      {good::geofenceCheck, "x-company-api-key: company-key", "x-company-api-key: ", "x-company-api-key: exp",
       401},
      {good::geofenceCheck, "x-app-id: app-7\n", "", "header x-app-id: missing"},
      {good::geofenceCheck, "x-app-api-key: app-key",
       "x-app-api-key: ", "header x-app-api-key: expected some"},
      {good::geofenceCheck, "x-platform: ios", "x-platform: iOS", R"(x-platform: expected ios, found "iOS")"},
      {good::configuration, "x-api-key: company-key\n\n", "x-api-key: other\n\n",
       "differs from x-company-api-key"},
      {good::legacyConfiguration, "\n\n", "\n\n{}", "body: expected none"},
      // JSON.
      {good::registration, R"("os_version":"17.0",)", "", "body.os_version: missing"},
      {good::registration, R"("app_name")", R"("a":[],"app_name")", R"(body: unknown key "a")"},
      {good::registration, R"("app_name")", R"("app_name":"x","app_name")", "body.app_name: there twice"},
      {good::registration, R"("correlation_id":"")", R"("correlation_id":null)",
       "expected a string, found null"},
      {good::registration, R"("iOS")", R"("ios")", R"(body.platform: expected iOS, found "ios")"},
      {good::registration, R"("language":"en_GB")", R"("language":"en")",
       "body.language: differs from country"},
      {good::registration, R"("key-1")", R"("key-2")", "body.api_key: differs from the header ApiKey"},
      {good::registration, "pending", "", "body.device_token: expected some text"},
      {good::registration, "9F8E7D6C", "9f8e7d6c", "body.device_id: expected an upper-case UUID"},
      {good::segments, R"({"segmentation":["gold","evening"],"device_registered_id":"device-1"})", "[]",
       "body: expected an object, found an array"},
      {good::segments, "}", "", "body: not JSON"},
      {good::segments, R"({"segmentation":["gold","evening"],"device_registered_id":"device-1"})", "",
       "body: empty"},
      {good::segments, R"(["gold","evening"])", R"("gold")",
       "body.segmentation: expected an array, found a string"},
      {good::segments, R"("evening")", "3", "body.segmentation[1]: expected a string, found an integer"},
      {good::geofenceCheck, "51.0", "51",
       R"(body.latitude: expected degrees from -90 to 90 as their shortest)"},
      {good::geofenceCheck, "51.0", "nan", "body.latitude: expected"},
      {good::geofenceCheck, "51.0", "90.5", "body.latitude: expected"},
      {good::geofenceCheck, "-0.12", "-180.5", "body.longitude: expected"},
      {good::geofenceCheck, ":10", ":11", R"(body.distance: expected 10, found "11")"},
      {good::geofenceCheck, ":10", ":10.0", "body.distance: expected an integer, found a number"},
      {good::survey, "survey_activity", "survey_shown", R"(body.activity: expected survey_activity)"},
      {good::survey, R"("choice_id")", R"("a":3,"choice_id")",
       R"(body.responses[1].choice[0]: unknown key "a")"},
      {good::survey, R"({"choice_id":11})", "11", "choice[0]: expected an object, found an integer"},
      {good::survey, R"({"choice_id":11})", "", "body.responses[1].choice: expected at least one"},
      {good::survey, "RATING", "STARS", R"(body.responses[0].type: unknown question type "STARS")"},
      {good::survey, R"("4")", R"("6")", "body.responses[0].value: expected a rating from 1 to 5"},
      {good::survey, R"(RATING","value":"4")", R"(NUMBER","value":"4.5")", "value: expected a whole number"},
      {good::survey, R"(RATING","value":"4")", R"(BOOLEAN","value":"y")", "expected true, false, yes or no"},
      {good::survey, R"(RATING","value":"4")", R"(OPEN_ENDED","value":" \n")",
       "[0].value: expected some text"},
      // Forms, byte for byte.
      {good::pluginActivity, " 09:26:53", "%2009%3A26%3A53",
       "field time: expected yyyy-MM-dd HH:mm:ss, found"},
      {good::pluginActivity, "03-14", "02-30", "field time: expected"},
      {good::pluginActivity, "09:26", "24:26", "field time: expected"},
      {good::pluginActivity,
       "device_registered_id=", "activity=", "body at byte 0, field device_registered_id: exp"},
      {good::pluginActivity, "&time=2025-03-14 09:26:53", "",
       R"(field device_registered_id: not ended by "&time=")"},
      {good::pluginActivity, "9F8E7D6C", "device",
       "field device_registered_id: expected the vendor's upper-case"},
      {good::pluginActivity, "plugin_started", "", "field activity: expected some text"},
      {good::activity, edge, "Boundary-0a1b2c3d-4e5f-4a6b-8c7d-9e0f1a2b3c4d",
       "header Content-Type: expected multi"},
      {good::activity, "; boundary=" + edge, "",
       "header Content-Type: expected multipart/form-data; boundary="},
      {good::activity, "\r\n\r\ndevice", "\n\r\ndevice",
       R"(body at byte 108, field device_registered_id: expected "\r\n\r\n", found "\n\r\nd)"},
      {good::activity, "\"location_id\"", "location_id", R"(field location_id: expected ""location_id"\r\n)"},
      {good::activity, "\"type\"\r\n", "\"type\"\r\nA: b\r\n",
       R"(field type: expected "\r\n", found "A: b\r\n)"},
      {good::activity, lead + "\"type\"\r\n\r\ngeofence\r\n", "",
       R"(field type: expected "type"\r\n\r\n", found "act)"},
      {good::activity, "-0.12\r\n--" + edge, "-0.12", "field longitude: not ended by"},
      {good::activity, "--\r\n", "--", R"(the closing line: expected "\r\n", found "")"},
      {good::activity, "--\r\n", "--\r\n\r\n", "2 bytes behind the end"},
      {good::activity, "device-1", "", "field device_registered_id: expected some text"},
      {good::activity, "42", "+42",
       R"(field curated_notification_id: expected a decimal integer, found "+42")"},
      {good::activity, "\r\n7\r\n", "\r\n07\r\n", "field location_id: expected a decimal integer"},
      {good::activity, "\ngeofence\r", "\nfence\r",
       R"(expected notification|location|geofence, found "fence")"},
  };
  for (const auto& row : rows) {
    const auto verdict = judge(requestOf(edited(row.request, row.from, row.to)));
    EXPECT_THAT(verdict.problems, ElementsAre(HasSubstr(row.problem))) << row.to;
    EXPECT_EQ(verdict.status, row.status) << row.problem;
  }
  const auto twoWrong = edited(edited(good::activity, "42", "x"), "51.5", "y");
  EXPECT_EQ(judge(requestOf(twoWrong)).problems.size(), 2U) << "values do not hide each other";
  auto broken = requestOf(good::segments);
  broken.isWhole = false;
  EXPECT_THAT(judge(broken).problems, ElementsAre(HasSubstr("body: too large, or broken off")));
}

}  // namespace
}  // namespace orlan::devbackend
