#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "campaigns/Fixtures.hpp"
#include "orlan/campaigns/CampaignFields.hpp"
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

const std::set<std::string> mayBeMissing{"geoCampaign.locationsArray", "geoCampaign._id",
                                         "notificationsArray._id", "notificationsArray.postMessage",
                                         "notificationsArray.published"};

std::string with(std::string_view text, std::string_view instead) {
  std::string answer(complete);
  return answer.replace(answer.find(text), text.size(), instead);
}

bool decodes(const json::Value& answer) {
  return GeofenceConversion::of(json::print(answer)).has_value();
}

/// Takes each member of the part `here` of the answer away, makes it null, and gives it another type.
void tryEachMember(const json::Value& answer, json::Value& here, const std::string& record) {
  if (auto* elements = here.array()) {
    for (auto& element : *elements) tryEachMember(answer, element, record);
  }
  if (!here.object()) return;
  json::Object& members = *here.object();
  for (const auto& [key, value] : json::Object(members)) {
    const std::string name = record + "." + key;
    members.remove(key);
    EXPECT_EQ(decodes(answer), mayBeMissing.contains(name)) << name << " missing";
    members.set(key, nullptr);
    EXPECT_EQ(decodes(answer), mayBeMissing.contains(name)) << name << " null";
    members.set(key, value.string() ? json::Value(7) : json::Value("7"));
    EXPECT_FALSE(decodes(answer)) << name << " of another type";
    members.set(key, value);
    tryEachMember(answer, *members.find(key), key);
  }
}

TEST(GeofenceResponse, NeedsEveryRequiredKeyWithItsTypeAndDoesWithoutTheOthers) {
  json::Value answer = *json::parse(complete);
  ASSERT_TRUE(decodes(answer));
  tryEachMember(answer, answer, "");
}

class Conversion : public test::WithLogger {
 protected:
  CampaignData converted(std::string_view answer) {
    auto conversion = GeofenceConversion::of(answer);
    if (!conversion) {
      ADD_FAILURE() << conversion.error().description;
      return {};
    }
    conversion->report.tell(logger);
    return std::move(conversion->data);
  }
};

TEST_F(Conversion, KeepsEveryField) {
  EXPECT_EQ(json::encodeText(converted(complete)).value(),
            R"({"campaignsArray":[{"campaign":{"campaignName":"Market","campaignId":42},)"
            R"("location":{"locationId":9,"geofence":[{"position":3,"latitude":51.5,"longitude":-0.12},)"
            R"({"position":1,"latitude":51.5,"longitude":-0.11},{"position":2,"latitude":51.6,)"
            R"("longitude":-0.11}]},"outsideNotificationsArray":[{"id":100,"campaignId":[42],)"
            R"("headline":"Hello","body":"Come in","type":"INFO","media":[{"type":"image",)"
            R"("url":"https://m.example","_id":"m1"}],"questions":[{"id":5,"name":"Why?",)"
            R"("type":"SINGLE_CHOICE","position":1,"choices":[{"id":6,"name":"Because","position":0}]}],)"
            R"("cta":[{"url":"https://c.example","label":"Go","_id":"c1"}],"segmentationTags":"a,b",)"
            R"("testIds":"","start":" 2026-01-01","end":"","activation":"ON_ENTER","_id":"n1"}]}]})");
  EXPECT_EQ(seen.lines, (Lines{{"INFO", "✅ Conversion complete – 1 GEO + 0 PUSH campaign(s)"}}));
}

TEST_F(Conversion, PutsPushCampaignsLastAndMarksThem) {
  json::Value answer = *json::parse(complete);
  json::Value campaign = answer.object()->find("geoCampaign")->array()->front();
  campaign.object()->remove("locationsArray");
  campaign.object()->find("notificationsArray")->array()->front().object()->remove("_id");
  json::Value nowhere = campaign;
  nowhere.object()->set("locations", json::Array{});
  answer.object()->set("pushCampaign", json::Array{campaign, nowhere});

  CampaignData data = converted(json::print(answer));
  ASSERT_EQ(data.campaignsArray.size(), 3u);
  EXPECT_EQ(data.campaignsArray[0].outsideNotificationsArray[0].activation, "ON_ENTER");
  EXPECT_EQ(data.campaignsArray[1].location, (CampaignData::Campaign::Location{7, {}}));
  EXPECT_EQ(data.campaignsArray[2].location, (CampaignData::Campaign::Location{0, {}}));
  EXPECT_EQ(data.campaignsArray[1].outsideNotificationsArray[0].activation, "PUSH");
  EXPECT_EQ(data.campaignsArray[1].outsideNotificationsArray[0]._id, "");
  EXPECT_EQ(seen.lines, (Lines{{"INFO", "✅ Conversion complete – 1 GEO + 2 PUSH campaign(s)"}}));

  data.campaignsArray.erase(data.campaignsArray.begin());  // an area that is written does not read back
  EXPECT_EQ(json::decodeText<CampaignData>(json::encodeText(data).value()).value(), data);
}

TEST_F(Conversion, DropsVerticesThatAreNowhere) {
  const CampaignData data = converted(with(R"("51.5", "longitude": "-0.12")", R"("51.5x", "longitude": "")"));
  EXPECT_EQ(data.campaignsArray[0].location.geofence,
            (std::vector<GeofencePoint>{{1, 51.5, -0.11}, {2, 51.6, -0.11}}));
  EXPECT_EQ(converted(with("-0.12", " 1")).campaignsArray[0].location.geofence.size(), 2u);
  const std::pair<std::string, std::string> end{"INFO", "✅ Conversion complete – 1 GEO + 0 PUSH campaign(s)"};
  EXPECT_EQ(seen.lines, (Lines{{"ERROR", "⚠️ Bad lat/lon \"51.5x,\""},
                               end,
                               {"ERROR", "⚠️ Bad lat/lon \"51.5, 1\""},
                               end}));
}

TEST_F(Conversion, ReadsNothingButWhatItKnows) {
  EXPECT_EQ(
      converted(
          R"({"geoCampaign": [], "huge": 18446744073709551616, "pushCampaign": [], "other": [1, {"x": -1e999}]})"),
      CampaignData{});
  EXPECT_EQ(seen.lines, (Lines{{"INFO", "✅ Conversion complete – 0 GEO + 0 PUSH campaign(s)"}}));

  struct Row {
    const char *text, *instead, *error;
  };
  for (const Row& row :
       {Row{R"("campaignId": 42)", R"("campaignId": 18446744073709551616)",
            "geoCampaign[0].campaignId: expected an integer, found a number"},
        {R"("v2")", "7",
         "geoCampaign[0].locationsArray.geofence[1]._id: expected a string, found an integer"}}) {
    EXPECT_EQ(GeofenceConversion::of(with(row.text, row.instead)).error().description, row.error);
  }
}

/// What is read element by element must come to what the same text comes to in one piece, as it is read with
/// a byte-order mark in front.
TEST(GeofenceResponse, ComesToTheSameByElementsAndInOnePiece) {
  const json::Value answer = *json::parse(complete);
  const std::string list = json::print(*answer.object()->find("geoCampaign"));
  const std::string campaign = list.substr(1, list.size() - 2);
  const auto deep = [](std::size_t levels) { return std::string(levels, '[') + std::string(levels, ']'); };
  const auto lists = [](const std::string& geo, const std::string& push) {
    return R"("geoCampaign":)" + geo + R"(,"pushCampaign":)" + push;
  };
  const std::string texts[] = {
      std::string(complete),
      "{" + lists(list, list) + "}",
      "{\"pushCampaign\" : " + list + ",\n \"geoCampaign\":[ " + campaign + "\t,\r\n" + campaign + "] } ",
      "{" + lists("[]", "[ ]") + R"(,"a\"]":[{"]":"}\\"}],"b":-1.5e3,"b":null,"":"{"})",
      R"({"geo\u0043ampaign":[],"pushCampaign":[]})",
      "{" + lists("[]", "[]") + R"(,"deep":)" + deep(511) + "}",
      "{" + lists("[]", "[]") + R"(,"deep":)" + deep(512) + "}",
      "{" + lists(list, "[]") + R"(,"geoCampaign":[]})",
      "{" + lists(list, "[]") + "}}",
      "{" + lists(list, "[]") + ",}",
      "{" + lists("[" + campaign + "," + campaign, "[]") + "}",
      "{" + lists("[" + campaign + campaign + "]", "[]") + "}",
      "{" + lists("[" + campaign + ",]", "[]") + "}",
      "{" + lists("[" + campaign.substr(0, campaign.size() - 1) + "]", "[]") + "}",
      "{" + lists(list, "{}") + "}",
      "{" + lists(list, "[]") + ",\"\xFF\":1}",
      "{" + lists(list, "[]") + R"(,"open":"})",
      "{" + lists(list, "[]") + R"(,7:1})",
      "{" + lists(list, "[]") + R"(,"none":})",
      R"({"geoCampaign":[)",
      R"({"geoCampaign":[],"x":1})",
      "[]",
      "",
  };
  for (const std::string& text : texts) {
    SCOPED_TRACE(text.substr(0, 60) + " … " +
                 text.substr(text.size() - std::min<std::size_t>(text.size(), 40)));
    const auto byElements = GeofenceConversion::of(text);
    const auto inOnePiece = GeofenceConversion::of("\xEF\xBB\xBF" + text);
    ASSERT_EQ(byElements.has_value(), inOnePiece.has_value());
    if (byElements) {
      EXPECT_EQ(byElements->data, inOnePiece->data);
      EXPECT_EQ(byElements->report.summary, inOnePiece->report.summary);
    }
  }
}

}  // namespace
}  // namespace orlan
