#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "geofence/Campaigns.hpp"
#include "orlan/geofence/RegionIdentifier.hpp"
#include "orlan/geofence/RegionSelection.hpp"
#include "orlan/platform/Place.hpp"
#include "platform/PolygonGenerators.hpp"

namespace orlan::test {
namespace {

using namespace regionSelection;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(RegionSelection, TheCircleReachesTheFarthestVertexFromTheMeanBetween100And1000Metres) {
  test::PolygonGenerator generate(3);
  int between = 0;
  for (int round = 0; round < 1000; ++round) {
    const Coordinate about{180.0 * generate.unit() - 90.0, 400.0 * generate.unit() - 200.0};
    const double size = std::pow(10.0, 4.0 * generate.unit() - 5.0);
    std::vector<Coordinate> ring;
    Coordinate mean;
    const std::size_t count = 1 + generate.below(40);
    for (std::size_t i = 0; i < count; ++i) {
      ring.push_back({std::clamp(about.latitude + size * generate.unit(), -90.0, 90.0),
                      about.longitude + size * generate.unit()});
      mean.latitude += ring[i].latitude;
      mean.longitude += ring[i].longitude;
    }
    mean = {mean.latitude / static_cast<double>(count), mean.longitude / static_cast<double>(count)};
    double farthest = 0.0;
    for (const Coordinate& vertex : ring) farthest = std::max(farthest, distance(mean, vertex));
    const Circle expected{mean, std::clamp(farthest, 100.0, 1000.0)};
    ASSERT_EQ(circleFor(Polygon(ring)), expected) << farthest;
    between += expected.radius == farthest;
  }
  EXPECT_GT(between, 200);
  EXPECT_LT(between, 800);
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
  for (const auto& [name, ring] : rows) EXPECT_EQ(circleFor(Polygon(ring)), std::nullopt) << name;
}

/// Distances, the greatest where there is none, and campaigns.
using Measured = std::vector<std::pair<double, std::int64_t>>;

Measured measured(const std::vector<CampaignPolygon>& polygons, Coordinate from) {
  Measured all;
  for (const auto& [polygon, campaign] : polygons) {
    const double metres = distance(from, polygon.centre().coordinate());
    all.emplace_back(std::isnan(metres) ? infinity : metres, campaign->campaign.campaignId);
  }
  return all;
}

/// Places that are hard to tell apart from `from` by distance: `spread` degrees away but for 2 %, or again
/// one that was there, or anywhere, on the globe or off it. Campaigns are numbered in their order.
std::vector<CampaignPolygon> placesAround(Coordinate from, double spread, test::PolygonGenerator& generate) {
  std::vector<CampaignPolygon> polygons;
  const auto count = static_cast<std::int64_t>(generate.below(120));
  for (std::int64_t id = 0; id < count; ++id) {
    if (id > 0 && generate.below(6) == 0) {
      polygons.push_back({polygons[generate.below(polygons.size())].polygon, campaign(id, 0)});
      continue;
    }
    const double angle = 7.0 * generate.unit();
    const double away = spread * (1.0 + 0.02 * generate.unit());
    Coordinate place{from.latitude + away * std::sin(angle),
                     from.longitude + away * std::cos(angle) / std::cos(from.latitude * 0.01745)};
    if (generate.below(10) == 0) place = {200.0 * generate.unit() - 100.0, 720.0 * generate.unit() - 360.0};
    if (generate.below(20) == 0) place.longitude = infinity;
    polygons.push_back({Polygon({place}), campaign(id, 0)});
  }
  return polygons;
}

TEST(RegionSelection, TheNearestAreTheFirstOfAllSortedByDistance) {
  test::PolygonGenerator generate(20);
  const Coordinate corners[] = {{0.0, 0.0},      {51.5, -0.12}, {90.0, 0.0}, {-90.0, 12.0},
                                {-17.0, 179.99}, {0.0, -180.0}, {nan, 0.0},  {91.0, 0.0}};
  for (int round = 0; round < 800; ++round) {
    Coordinate from = corners[generate.below(std::size(corners))];
    const double spread = std::pow(10.0, 7.0 * generate.unit() - 6.0);
    const auto polygons = placesAround(from, spread, generate);
    if (generate.below(5) == 0) from = {-from.latitude, from.longitude + 180.0};  // all at the other end
    auto expected = measured(polygons, from);
    std::sort(expected.begin(), expected.end());
    expected.resize(std::min(expected.size(), mostRegions));
    ASSERT_EQ(measured(nearest(polygons, from), from), expected)
        << from.latitude << "," << from.longitude << " among " << polygons.size() << " at " << spread;
  }
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
