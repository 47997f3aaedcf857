#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "requests.hpp"
#include "tools/orlan/backend/Verdict.hpp"

namespace orlan::devbackend {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(Verdict, NothingIsWrongWithWhatAClientMaySend) {
  struct Row {
    const std::string& request;
    std::string from, to;
  };
  const std::string event =
      R"({"device_registered_id":"d","curated_notification_id":42,"activity":"survey_shown"})";
  for (const auto& row :
       {Row{good::registration, R"(_id":"0")", R"(_id":"1001")"},  // a token sync
        Row{good::segments, R"("gold","evening")", ""}, Row{good::activity, "51.5", "-1.0"},
        Row{good::activity, "device-1", "device\r\n1"}, Row{good::pluginActivity, good::uuid, "unknown"},
        Row{good::pluginActivity, "plugin_started", "a&activity=b&time=c"},
        Row{good::survey, "survey_activity", "survey\\u005factivity"},
        Row{good::survey, good::survey.substr(good::survey.find('{')), event}}) {
    const auto verdict = judge(requestOf(edited(row.request, row.from, row.to)));
    EXPECT_EQ(verdict.status, 200) << row.to;
    EXPECT_THAT(verdict.problems, IsEmpty()) << row.to;
  }
}

TEST(Verdict, EveryMistakeIsNamedAloneAndWithItsPlace) {
  using namespace good;
  struct Row {
    const std::string& request;
    std::string from, to, problem;
    int status = 400;
  };
  const std::string edge(boundary);
  const std::string jsonType = "Content-Type: application/json\n";
  const std::string key = "ApiKey: key-1\n";
  const std::string rating = R"(RATING","value":"4")";
  const std::string choice = R"({"choice_id":11})";
  const std::string segmentsBody = segments.substr(segments.find('{'));
  const std::string typePart =
      "form-data; name=\"type\"\r\n\r\ngeofence\r\n--" + edge + "\r\nContent-Disposition: ";
  const Row rows[] = {
      {segments, "segments", "segment\t", R"(no such endpoint "/api/segment\t"; there are /api/dev)", 404},
      {segments, "POST", "GET", R"(method: expected POST, found "GET")", 405},
      {segments, "/api", "/api/api", "no such endpoint", 404},
      {legacyConfiguration, "/get", "/api///get", "no such endpoint", 404},
      {legacyConfiguration, "config", "config?a=1", "no such endpoint", 404},
      // Headers.
      {segments, jsonType + key, key + jsonType, "headers: expected in the order Content-Type, ApiKey"},
      {segments, key, key + key, "header ApiKey: sent 2 times"},
      {segments, "ApiKey", "apikey", R"(header ApiKey: spelled "apikey")"},
      {segments, "/json", "/json; charset=utf-8",
       R"(header Content-Type: expected application/json, found "ap)"},
      {segments, key, key + "Expect: 100-continue\n", R"(header "Expect": does not belong)"},
      {segments, "key-1", "", R"(header ApiKey: expected some text, found "")", 401},
      {segments, key, "", "header ApiKey: missing", 401},
      {legacyConfiguration, "\n\n", "\n\n{}", "body: expected none"},
      {geofenceCheck, "company-key", "", "header x-company-api-key: expected some text", 401},
      {geofenceCheck, "x-app-id: app-7\n", "", "header x-app-id: missing"},
      {geofenceCheck, ": ios", ": iOS", R"(header x-platform: expected ios, found "iOS")"},
      {configuration, "x-api-key: company-key\n\n", "x-api-key: other\n\n", "differs from x-company-api-key"},
      // JSON.
      {registration, R"("os_version":"17.0",)", "", "body.os_version: missing"},
      {registration, R"("app_name")", R"("a":[],"app_name")", R"(body: unknown key "a")"},
      {registration, R"("app_name")", R"("app_name":"x","app_name")", "body.app_name: there twice"},
      {registration, R"(_id":"")", R"(_id":null)", "body.correlation_id: expected a string, found null"},
      {registration, R"("iOS")", R"("ios")", R"(body.platform: expected iOS, found "ios")"},
      {registration, R"("language":"en_GB")", R"("language":"en")", "body.language: differs from country"},
      {registration, R"("key-1")", R"("key-2")", "body.api_key: differs from the header ApiKey"},
      {registration, "9F8E7D6C", "9f8e7d6c", "body.device_id: expected an upper-case UUID"},
      {segments, segmentsBody, "[]", "body: expected an object, found an array"},
      {segments, segmentsBody, "", "body: empty"},
      {segments, "}", "", "body: not JSON"},
      {segments, R"("evening")", "3", "body.segmentation[1]: expected a string, found an integer"},
      {geofenceCheck, "51.0", "51", "body.latitude: expected degrees from -90 to 90 as their shortest"},
      {geofenceCheck, "51.0", "90.5", "body.latitude: expected"},
      {geofenceCheck, "-0.12", "-180.5", "body.longitude: expected"},
      {geofenceCheck, ":10", ":11", R"(body.distance: expected 10, found "11")"},
      {survey, "survey_activity", "survey_shown", "body.activity: expected survey_activity"},
      {survey, R"("choice_id")", R"("a":3,"choice_id")", R"(body.responses[1].choice[0]: unknown key "a")"},
      {survey, choice, "", "body.responses[1].choice: expected at least one"},
      {survey, "RATING", "STARS", R"(body.responses[0].type: unknown question type "STARS")"},
      {survey, R"("4")", R"("6")", "body.responses[0].value: expected a rating from 1 to 5"},
      {survey, rating, R"(NUMBER","value":"4.5")", "value: expected a whole number"},
      {survey, rating, R"(BOOLEAN","value":"y")", "value: expected true, false, yes or no"},
      {survey, rating, R"(OPEN_ENDED","value":" \n")", "value: expected some text"},
      // Forms, byte for byte.
      {pluginActivity, " 09:26:53", "%2009%3A26%3A53", "field time: expected yyyy-MM-dd HH:mm:ss, found"},
      {pluginActivity, "03-14", "02-30", "field time: expected"},
      {pluginActivity, "09:26", "24:26", "field time: expected"},
      {pluginActivity, "device_reg", "reg",
       "body at byte 0, field device_registered_id: expected \"device_reg"},
      {pluginActivity, "&time=", "", R"(field device_registered_id: not ended by "&time=")"},
      {pluginActivity, "9F8E7D6C", "device", "field device_registered_id: expected the vendor's upper-case"},
      {activity, edge, "Boundary-0a1b2c3d-4e5f-4a6b-8c7d-9e0f1a2b3c4d",
       "header Content-Type: expected multi"},
      {activity, "; boundary=" + edge, "", "header Content-Type: expected multipart/form-data; boundary="},
      {activity, "\r\n\r\ndevice", "\n\r\ndevice", R"(body at byte 108, field device_registered_id: exp)"},
      {activity, typePart, "", R"(field type: expected "type"\r\n\r\n", found "activity"\r\n)"},
      {activity, "--\r\n", "--", R"(the closing line: expected "\r\n", found "")"},
      {activity, "--\r\n", "--\r\n\r\n", "2 bytes behind the end"},
      {activity, "\n7\r", "\n07\r", "field location_id: expected a decimal integer"},
      {activity, "\ngeofence\r", "\nfence\r", "field type: expected notification|location|geofence"},
  };
  for (const auto& row : rows) {
    const auto verdict = judge(requestOf(edited(row.request, row.from, row.to)));
    EXPECT_THAT(verdict.problems, ElementsAre(HasSubstr(row.problem))) << row.to;
    EXPECT_EQ(verdict.status, row.status) << row.problem;
  }
  const auto twoWrong = edited(edited(activity, "42", "x"), "51.5", "y");
  EXPECT_EQ(judge(requestOf(twoWrong)).problems.size(), 2U) << "values do not hide each other";
}

}  // namespace
}  // namespace orlan::devbackend
