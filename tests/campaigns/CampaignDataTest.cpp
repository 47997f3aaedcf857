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

TEST(GeofencePoint, ReadsTextsAndWritesNumbersThatItDoesNotRead) {
  const std::pair<std::string, double> rows[] = {
      {"51.5", 51.5}, {" 51.5", 0.0}, {"north", 0.0}, {"0x1p3", 8.0}, {"-infinity", -INFINITY}};
  for (const auto& [text, degrees] : rows) {
    const auto point = json::decodeText<GeofencePoint>(R"({"position": 2, "latitude": ")" + text +
                                                       R"(", "longitude": "-0.12"})");
    ASSERT_TRUE(point) << text;
    EXPECT_EQ(*point, (GeofencePoint{2, degrees, -0.12})) << text;
  }
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

TEST(CampaignPolygons, KeepOrderLeaveOutWhatIsNoneAndKeepAliveWhatTheyShare) {
  auto data = std::make_shared<CampaignData>();
  const auto add = [&](std::int64_t id, std::vector<GeofencePoint> ring) {
    data->campaignsArray.push_back(Campaign{{"", id}, {id * 10, std::move(ring)}, {}});
  };
  add(1, {{9, 0, 0}, {3, 0, 1}, {7, 1, 1}});  // positions order nothing
  add(2, {{1, 0, 0}, {2, 0, 1}});
  add(3, {});
  add(4, {{1, 5, 5}, {2, 5, 6}, {3, 6, 6}, {4, 6, 5}});

  auto polygons = campaignPolygons(data);
  ASSERT_EQ(polygons.size(), 2u);
  EXPECT_EQ(polygons[0].polygon, Polygon({{0, 0}, {0, 1}, {1, 1}}));
  EXPECT_EQ(&*polygons[0].campaign, &data->campaignsArray.front());
  const auto copies = polygons;
  EXPECT_EQ(copies[0].polygon.coordinates().data(), polygons[0].polygon.coordinates().data());
  data.reset();
  polygons.clear();
  EXPECT_EQ(copies[1].campaign->location.locationId, 40);
  EXPECT_EQ(copies[1].polygon.pointCount(), 4u);

  const CampaignPolygon byValue{copies[0].polygon, *copies[0].campaign};
  EXPECT_NE(&*byValue.campaign, &*copies[0].campaign);
  EXPECT_EQ(byValue, copies[0]);
}

}  // namespace
}  // namespace orlan
