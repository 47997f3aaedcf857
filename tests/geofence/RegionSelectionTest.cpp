#include <gmock/gmock.h>

#include <limits>

#include "geofence/Campaigns.hpp"
#include "orlan/geofence/RegionIdentifier.hpp"
#include "orlan/geofence/RegionSelection.hpp"

namespace orlan::test {
namespace {

using namespace regionSelection;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(RegionSelection, TheCircleReachesTheFarthestVertexFromTheMean) {
  const std::vector<Coordinate> ring{{51.0, 0.0}, {51.0, 0.2}, {51.3, 0.1}};
  const auto circle = circleForVertices(ring);
  ASSERT_TRUE(circle);
  EXPECT_DOUBLE_EQ(circle->centre.latitude, 51.1);
  EXPECT_DOUBLE_EQ(circle->centre.longitude, 0.1);
  EXPECT_EQ(circle->radius, distance(circle->centre, ring[2]));
  // GeographicLib comes with the system, whose compiler may have fused its multiplications and additions.
  EXPECT_NEAR(circleForVertices(std::vector<Coordinate>{{51.0, 0.0}})->radius, 0.0, 1e-9);
}

TEST(RegionSelection, WithoutAPlaceThereIsNoCircle) {
  const std::pair<const char*, std::vector<Coordinate>> rows[] = {
      {"no vertices", {}},
      {"a latitude that is no number", {{51.0, 0.0}, {nan, 0.0}}},
      {"a longitude that is no number", {{51.0, nan}, {51.0, 0.0}}},
      {"infinitely far", {{51.0, 0.0}, {51.0, infinity}}},
      {"beyond the pole", {{89.0, 0.0}, {90.5, 0.0}}},
      {"a sum beyond doubles", {{51.0, 1.7e308}, {51.0, 1.7e308}}},
  };
  for (const auto& [name, ring] : rows) EXPECT_EQ(circleForVertices(ring), std::nullopt) << name;
}

TEST(RegionSelection, RadiiAreKeptBetween100And1000Metres) {
  const std::pair<double, double> rows[] = {{0.0, 100.0},   {99.9, 100.0},      {100.5, 100.5},
                                            {345.6, 345.6}, {1000.5, 1000.0},   {3000.0, 1000.0},
                                            {nan, 100.0},   {infinity, 1000.0}, {-1.0, 100.0}};
  for (const auto& [radius, expected] : rows) EXPECT_EQ(clampedRadius(radius), expected) << radius;
}

std::vector<std::int64_t> order(const std::vector<CampaignPolygon>& polygons, Coordinate from) {
  std::vector<std::int64_t> ids;
  for (const auto& entry : sortedByProximity(polygons, from))
    ids.push_back(entry.campaign->campaign.campaignId);
  return ids;
}

TEST(RegionSelection, TheNearestComeFirstAndEqualsKeepTheirOrder) {
  const std::vector<CampaignPolygon> polygons{
      {Polygon(), campaign(1, 0)},
      {square({51.3, 0.0}), campaign(2, 0)},
      {Polygon({{nan, 0.0}, {51.0, 0.0}, {51.0, 0.1}}), campaign(3, 0)},
      {square({51.1, 0.0}), campaign(4, 0)},
      {square({51.1, 0.0}, 0.01), campaign(5, 0)},
      {square({51.0, 0.0}), campaign(6, 0)},
      {Polygon(), campaign(7, 0)},
  };
  EXPECT_THAT(order(polygons, {51.0, 0.0}), testing::ElementsAre(6, 4, 5, 2, 1, 3, 7));
  EXPECT_THAT(order(polygons, {nan, 0.0}), testing::ElementsAre(1, 2, 3, 4, 5, 6, 7)) << "no distance at all";
}

TEST(RegionIdentifier, IsBuiltAndReadBack) {
  EXPECT_EQ(regionIdentifier::of(12, 7), "camp_12_7");
  const std::pair<const char*, std::optional<std::int64_t>> rows[] = {{"", {}},
                                                                      {"camp_", {}},
                                                                      {"camp_x_7", {}},
                                                                      {"camp__12_7", 12},
                                                                      {"camp_9223372036854775808_1", {}},
                                                                      {"camp_1 2_7", {}}};
  for (const auto& [identifier, expected] : rows) {
    EXPECT_EQ(regionIdentifier::campaignId(identifier), expected) << identifier;
  }
}

}  // namespace
}  // namespace orlan::test
