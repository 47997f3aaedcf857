#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "orlan/campaigns/CampaignFields.hpp"
#include "orlan/campaigns/CampaignPolygons.hpp"

namespace orlan {
namespace {

using Campaign = CampaignData::Campaign;

TEST(GeofencePoint, ReadsCoordinatesFromTexts) {
  struct Row {
    const char* latitude;
    const char* longitude;
    double expectedLatitude;
    double expectedLongitude;
  };
  for (const Row& row : {Row{"51.5", "-0.12", 51.5, -0.12},
                         {" 51.5", "-0.12", 0.0, -0.12},
                         {"51.5", "north", 51.5, 0.0},
                         {"", "", 0.0, 0.0},
                         {"51.5x", "1 ", 0.0, 0.0},
                         {"5.15e1", "0x1p3", 51.5, 8.0},
                         {"inf", "-infinity", INFINITY, -INFINITY}}) {
    const std::string text = std::string(R"({"position": 2, "latitude": ")") + row.latitude +
                             R"(", "longitude": ")" + row.longitude + R"("})";
    const auto point = json::decodeText<GeofencePoint>(text);
    ASSERT_TRUE(point) << text;
    EXPECT_EQ(*point, (GeofencePoint{2, row.expectedLatitude, row.expectedLongitude})) << text;
  }
  const auto unknown =
      json::decodeText<GeofencePoint>(R"({"position": 1, "latitude": "nan", "longitude": "0"})");
  ASSERT_TRUE(unknown);
  EXPECT_TRUE(std::isnan(unknown->latitude()));
}

TEST(GeofencePoint, WritesCoordinatesAsNumbersThatItDoesNotRead) {
  const auto text = json::encodeText(GeofencePoint{3, 51.5, -1.0});
  EXPECT_EQ(text.value(), R"({"position":3,"latitude":51.5,"longitude":-1.0})");
  const auto again = json::decodeText<GeofencePoint>(text.value());
  ASSERT_FALSE(again);
  EXPECT_NE(again.error().description.find("latitude: expected a string"), std::string::npos);
  for (const double nowhere : {NAN, INFINITY, -INFINITY}) {
    EXPECT_FALSE(json::encodeText(GeofencePoint{3, 51.5, nowhere})) << "no text in the place of a number";
  }
}

TEST(GeofencePoint, EqualPointsHashAlike) {
  const std::unordered_set<GeofencePoint> points{{1, 0.0, 5.0}, {1, -0.0, 5.0}, {2, 0.0, 5.0}, {1, 5.0, 0.0}};
  EXPECT_EQ(points.size(), 3u);
  const std::hash<GeofencePoint> hash;
  for (const GeofencePoint other : {GeofencePoint{2, 0.0, 5.0}, {1, 5.0, 0.0}, {1, 0.0, -5.0}}) {
    EXPECT_NE(hash(GeofencePoint{1, 0.0, 5.0}), hash(other));
  }
}

TEST(CampaignData, TellsAbsentFromEmpty) {
  const std::string start =
      R"({"id":1,"campaignId":[1],"headline":"h","body":"b","type":"t","media":[],"cta":[],)"
      R"("segmentationTags":"","testIds":"","start":"","end":"","activation":"ON_ENTER","_id":"")";
  const auto without = json::decodeText<CampaignData::Notification>(start + "}");
  const auto null = json::decodeText<CampaignData::Notification>(start + R"(,"questions":null})");
  const auto empty = json::decodeText<CampaignData::Notification>(start + R"(,"questions":[]})");
  ASSERT_TRUE(without && null && empty);
  EXPECT_FALSE(without->questions.has_value());
  EXPECT_EQ(*without, *null);
  ASSERT_TRUE(empty->questions.has_value());
  EXPECT_TRUE(empty->questions->empty());
  EXPECT_EQ(json::encodeText(*without).value().find("questions"), std::string::npos);
  EXPECT_NE(json::encodeText(*empty).value().find(R"("questions":[])"), std::string::npos);

  const auto choice = json::decodeText<CampaignData::Choice>("{}");
  ASSERT_TRUE(choice);
  EXPECT_EQ(*choice, CampaignData::Choice{});
  EXPECT_FALSE(json::decodeText<CampaignData::Question>(R"({"id":1,"name":"n","type":"t"})"));
}

TEST(CampaignData, SurvivesItsJsonForm) {
  const CampaignData data{{Campaign{
      {"Market", 42},
      {7, {}},
      {CampaignData::Notification{
          1,
          {42, 43},
          "Headline",
          "Body",
          "INFO",
          {{"image", "https://media.example/1.png", "m1"}},
          std::vector{CampaignData::Question{5, "Why?", "SINGLE_CHOICE", 1,
                                             std::vector{CampaignData::Choice{9, "Because", 0}, {}}}},
          {{std::nullopt, "Go", "c1"}, {"https://cta.example", "Stay", "c2"}},
          "a,b",
          "",
          "2026-01-01",
          "2026-12-31",
          "ON_EXIT",
          "n1"}}}}};
  const auto again = json::decodeText<CampaignData>(json::encodeText(data).value());
  ASSERT_TRUE(again) << again.error().description;
  EXPECT_EQ(*again, data);
}

TEST(CampaignPolygons, KeepOrderAndLeaveOutWhatIsNoPolygon) {
  auto data = std::make_shared<CampaignData>();
  const auto add = [&](std::int64_t id, std::vector<GeofencePoint> ring) {
    data->campaignsArray.push_back(Campaign{{"", id}, {id * 10, std::move(ring)}, {}});
  };
  add(1, {{9, 0, 0}, {3, 0, 1}, {7, 1, 1}});  // positions order nothing
  add(2, {{1, 0, 0}, {2, 0, 1}});
  add(3, {});
  add(4, {{1, 5, 5}, {2, 5, 6}, {3, 6, 6}, {4, 6, 5}});

  const auto polygons = campaignPolygons(data);
  ASSERT_EQ(polygons.size(), 2u);
  EXPECT_EQ(polygons[0].polygon, Polygon({{0, 0}, {0, 1}, {1, 1}}));
  EXPECT_EQ(polygons[0].campaign->campaign.campaignId, 1);
  EXPECT_EQ(polygons[1].campaign->location.locationId, 40);
  EXPECT_EQ(polygons[1].polygon.pointCount(), 4u);
}

TEST(CampaignPolygons, ShareWhatTheyHoldAndKeepItAlive) {
  auto data = std::make_shared<const CampaignData>(
      CampaignData{{Campaign{{"Shared", 1}, {1, {{0, 0, 0}, {1, 0, 1}, {2, 1, 1}}}, {}}}});
  const Campaign* original = &data->campaignsArray.front();
  auto polygons = campaignPolygons(data);
  const auto copies = polygons;
  EXPECT_EQ(&*copies[0].campaign, original);
  EXPECT_EQ(copies[0].polygon.coordinates().data(), polygons[0].polygon.coordinates().data());
  data.reset();
  polygons.clear();
  EXPECT_EQ(copies[0].campaign->campaign.campaignName, "Shared");

  const CampaignPolygon byValue{copies[0].polygon, *copies[0].campaign};
  EXPECT_NE(&*byValue.campaign, original);
  EXPECT_EQ(byValue, copies[0]);
}

}  // namespace
}  // namespace orlan
