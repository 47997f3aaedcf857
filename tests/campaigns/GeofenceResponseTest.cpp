#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "campaigns/Fixtures.hpp"
#include "orlan/base/text.hpp"
#include "orlan/campaigns/GeofenceResponse.hpp"

namespace orlan {
namespace {

using Lines = std::vector<std::pair<std::string, std::string>>;

// Every key that an answer can have.
constexpr std::string_view complete = R"({
  "geoCampaign": [{
    "campaignName": "Market", "campaignId": 42, "type": "GEO", "locations": [7, 8], "active": "true",
    "testIds": "t", "_id": "w1", "segmentationTags": "s",
    "locationsArray": {"locationId": 9, "_id": "l1", "geofence": [
      {"position": 3, "latitude": "51.5", "longitude": "-0.12", "_id": "v1"},
      {"position": 1, "latitude": "51.5", "longitude": "-0.11", "_id": "v2"},
      {"position": 2, "latitude": "51.6", "longitude": "-0.11", "_id": "v3"}]},
    "notificationsArray": [{
      "id": 100, "campaignId": [42], "headline": "Hello", "body": "Come in", "type": "INFO",
      "media": [{"type": "image", "url": "https://m.example", "_id": "m1"}],
      "questions": [{"id": 5, "question": "Why?", "question_type": "SINGLE_CHOICE", "has_choices": false,
                     "position": 1, "choices": [{"id": 6, "position": 0, "choice": "Because"}]}],
      "cta": [{"url": "https://c.example", "label": "Go", "_id": "c1"}],
      "segmentationTags": "a,b", "testIds": "", "postMessage": "later", "start": " 2026-01-01", "end": "",
      "activation": "ON_ENTER", "_id": "n1", "published": true}]}],
  "pushCampaign": []
})";

json::Value completeAnswer() {
  return *json::parse(complete);
}

/// The value at a path such as "geoCampaign.0.locationsArray"; null pointer when there is none.
json::Value* at(json::Value& root, std::string_view path) {
  json::Value* here = &root;
  for (const std::string& step : text::split(path, '.')) {
    if (here->array()) {
      here = &(*here->array())[static_cast<std::size_t>(*text::toInteger(step))];
    } else {
      here = here->object()->find(step);
    }
  }
  return here;
}

bool decodes(const json::Value& answer) {
  return NewGeofenceResponse::decode(json::print(answer)).has_value();
}

struct RecordKeys {
  const char* path;
  std::vector<const char*> required;
  std::vector<const char*> optional;
};

const std::vector<RecordKeys>& records() {
  static const std::vector<RecordKeys> table{
      {"", {"geoCampaign", "pushCampaign"}, {}},
      {"geoCampaign.0",
       {"campaignName", "campaignId", "type", "locations", "active", "testIds", "notificationsArray",
        "segmentationTags"},
       {"locationsArray", "_id"}},
      {"geoCampaign.0.locationsArray", {"locationId", "geofence", "_id"}, {}},
      {"geoCampaign.0.locationsArray.geofence.1", {"position", "latitude", "longitude", "_id"}, {}},
      {"geoCampaign.0.notificationsArray.0",
       {"id", "campaignId", "headline", "body", "type", "media", "questions", "cta", "segmentationTags",
        "testIds", "start", "end", "activation"},
       {"postMessage", "_id", "published"}},
      {"geoCampaign.0.notificationsArray.0.media.0", {"type", "url", "_id"}, {}},
      {"geoCampaign.0.notificationsArray.0.questions.0",
       {"id", "question", "question_type", "has_choices", "position", "choices"},
       {}},
      {"geoCampaign.0.notificationsArray.0.questions.0.choices.0", {"id", "position", "choice"}, {}},
      {"geoCampaign.0.notificationsArray.0.cta.0", {"url", "label", "_id"}, {}},
  };
  return table;
}

/// A value of another kind than the one that stands there.
json::Value ofAnotherKind(const json::Value& value) {
  return value.string() ? json::Value(7) : json::Value("7");
}

TEST(GeofenceResponse, NeedsEveryRequiredKeyWithItsTypeAndDoesWithoutTheOthers) {
  ASSERT_TRUE(decodes(completeAnswer()));
  const auto check = [](const RecordKeys& record, const char* key, bool isOptional) {
    const std::string where = std::string(record.path) + "." + key;
    json::Value missing = completeAnswer();
    ASSERT_TRUE(at(missing, where)) << where;
    at(missing, record.path)->object()->remove(key);
    EXPECT_EQ(decodes(missing), isOptional) << where << " missing";

    json::Value null = completeAnswer();
    *at(null, where) = nullptr;
    EXPECT_EQ(decodes(null), isOptional) << where << " null";

    json::Value wrong = completeAnswer();
    *at(wrong, where) = ofAnotherKind(*at(wrong, where));
    EXPECT_FALSE(decodes(wrong)) << where << " of another type";
  };
  for (const auto& record : records()) {
    for (const char* key : record.required) check(record, key, false);
    for (const char* key : record.optional) check(record, key, true);
  }
}

TEST(GeofenceResponse, IsRefusedAsAWholeAndSaysWhere) {
  struct Row {
    const char* text;
    const char* reason;
  };
  for (const Row& row :
       {Row{"", ""},
        {"[]", "expected an object, found an array"},
        {"null", "expected an object, found null"},
        {R"({"geoCampaign": [], "pushCampaign": [], )", ""},
        {R"({"geoCampaign": [], "pushCampaign": [3]})", "pushCampaign[0]: expected an object"},
        {R"({"geoCampaign": []})", "pushCampaign: missing"}}) {
    const auto response = NewGeofenceResponse::decode(row.text);
    ASSERT_FALSE(response) << row.text;
    EXPECT_NE(response.error().description.find(row.reason), std::string::npos)
        << response.error().description;
  }
  json::Value wrong = completeAnswer();
  *at(wrong, "geoCampaign.0.locationsArray.geofence.1.latitude") = 51.5;
  EXPECT_EQ(NewGeofenceResponse::decode(json::print(wrong)).error().description,
            "geoCampaign[0].locationsArray.geofence[1].latitude: expected a string, found a number");
}

class GeofenceConversion : public test::WithLogger {
 protected:
  CampaignData converted(const json::Value& answer) {
    auto response = NewGeofenceResponse::decode(json::print(answer));
    EXPECT_TRUE(response);
    return convert(std::move(*response), logger);
  }
};

TEST_F(GeofenceConversion, KeepsEveryField) {
  const CampaignData expected{{CampaignData::Campaign{
      {"Market", 42},
      {9, {{3, 51.5, -0.12}, {1, 51.5, -0.11}, {2, 51.6, -0.11}}},
      {CampaignData::Notification{
          100,
          {42},
          "Hello",
          "Come in",
          "INFO",
          {{"image", "https://m.example", "m1"}},
          std::vector{CampaignData::Question{5, "Why?", "SINGLE_CHOICE", 1,
                                             std::vector{CampaignData::Choice{6, "Because", 0}}}},
          {{"https://c.example", "Go", "c1"}},
          "a,b",
          "",
          " 2026-01-01",
          "",
          "ON_ENTER",
          "n1"}}}}};
  EXPECT_EQ(converted(completeAnswer()), expected);
  EXPECT_EQ(seen.lines, (Lines{{"INFO", "✅ Conversion complete – 1 GEO + 0 PUSH campaign(s)"}}));
}

TEST_F(GeofenceConversion, PutsPushCampaignsLastAndMarksThem) {
  json::Value answer = completeAnswer();
  json::Value campaign = *at(answer, "geoCampaign.0");
  *at(campaign, "campaignId") = 1;
  campaign.object()->remove("locationsArray");
  campaign.object()->find("notificationsArray")->array()->front().object()->remove("_id");
  *at(answer, "pushCampaign") = json::Array{campaign, campaign};
  *at(answer, "pushCampaign.1.locations") = json::Array{};

  const CampaignData data = converted(answer);
  ASSERT_EQ(data.campaignsArray.size(), 3u);
  EXPECT_EQ(data.campaignsArray[0].campaign.campaignId, 42);
  EXPECT_EQ(data.campaignsArray[0].outsideNotificationsArray[0].activation, "ON_ENTER");
  EXPECT_EQ(data.campaignsArray[1].location, (CampaignData::Campaign::Location{7, {}}));
  EXPECT_EQ(data.campaignsArray[2].location, (CampaignData::Campaign::Location{0, {}}));
  EXPECT_EQ(data.campaignsArray[1].outsideNotificationsArray[0].activation, "PUSH");
  EXPECT_EQ(data.campaignsArray[1].outsideNotificationsArray[0]._id, "");
  EXPECT_EQ(seen.lines, (Lines{{"INFO", "✅ Conversion complete – 1 GEO + 2 PUSH campaign(s)"}}));
}

TEST_F(GeofenceConversion, DropsVerticesThatAreNowhere) {
  json::Value answer = completeAnswer();
  *at(answer, "geoCampaign.0.locationsArray.geofence.0.latitude") = "51.5x";
  *at(answer, "geoCampaign.0.locationsArray.geofence.2.longitude") = " 1";
  const CampaignData data = converted(answer);
  EXPECT_EQ(data.campaignsArray[0].location.geofence, (std::vector<GeofencePoint>{{1, 51.5, -0.11}}));
  EXPECT_EQ(seen.lines, (Lines{{"ERROR", "⚠️ Bad lat/lon \"51.5x,-0.12\""},
                               {"ERROR", "⚠️ Bad lat/lon \"51.6, 1\""},
                               {"INFO", "✅ Conversion complete – 1 GEO + 0 PUSH campaign(s)"}}));
}

TEST_F(GeofenceConversion, ReadsNothingButWhatItKnows) {
  const auto response = NewGeofenceResponse::decode(
      R"({"geoCampaign": [], "huge": 18446744073709551616, "pushCampaign": [], "other": [1, {"x": -1e999}]})");
  ASSERT_TRUE(response) << response.error().description;
  EXPECT_EQ(convert(*response, logger), CampaignData{});
  EXPECT_EQ(seen.lines, (Lines{{"INFO", "✅ Conversion complete – 0 GEO + 0 PUSH campaign(s)"}}));

  std::string huge(complete);
  huge.replace(huge.find("\"campaignId\": 42"), 16, "\"campaignId\": 18446744073709551616");
  EXPECT_EQ(NewGeofenceResponse::decode(huge).error().description,
            "geoCampaign[0].campaignId: expected an integer, found a number");
}

}  // namespace
}  // namespace orlan
