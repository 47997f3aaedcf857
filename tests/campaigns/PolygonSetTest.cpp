#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "campaigns/Fixtures.hpp"
#include "orlan/campaigns/PolygonSet.hpp"
#include "platform/PolygonGenerators.hpp"

namespace orlan {
namespace {

using Indices = std::vector<PolygonSet::Index>;
using test::campaignPolygon;

/// What asking one by one says.
Indices containingOneByOne(const PolygonSet& set, Coordinate point) {
  Indices found;
  for (PolygonSet::Index i = 0; i < set.size(); ++i) {
    if (rayCastingContains(set.polygons()[i].polygon.coordinates(), point)) found.push_back(i);
  }
  return found;
}

Indices nearOneByOne(const PolygonSet& set, Coordinate point, double metres) {
  Indices found;
  for (PolygonSet::Index i = 0; i < set.size(); ++i) {
    if (set.polygons()[i].polygon.hasVertexWithin(point, metres)) found.push_back(i);
  }
  return found;
}

/// A town of stars with some continents, slivers and nonsense among them.
PolygonSet mixed(test::PolygonGenerator& generate, std::size_t count, bool nonsense) {
  std::vector<CampaignPolygon> polygons;
  for (std::size_t i = 0; i < count; ++i) {
    std::vector<Coordinate> ring;
    if (nonsense && generate.below(8) == 0) {
      ring = generate.ring();
    } else {
      ring = generate.star(3 + generate.below(20));
      const Coordinate move{51.0 + generate.unit() - ring[0].latitude, generate.unit() - ring[0].longitude};
      for (auto& vertex : ring) {
        vertex = {vertex.latitude + move.latitude, vertex.longitude + move.longitude};
      }
    }
    polygons.push_back(campaignPolygon(static_cast<std::int64_t>(i), std::move(ring)));
  }
  return PolygonSet(std::move(polygons));
}

TEST(PolygonSet, AnswersLikeAskingOneByOne) {
  test::PolygonGenerator generate(11);
  std::size_t inside = 0;
  std::size_t near = 0;
  for (int round = 0; round < 60; ++round) {
    const PolygonSet set = mixed(generate, generate.below(round % 10 == 0 ? 600 : 40), round % 3 != 0);
    for (int i = 0; i < 60; ++i) {
      Coordinate point{51.0 + generate.unit(), generate.unit()};
      if (set.size() > 0 && i % 2 == 0) {
        const auto ring = set.polygons()[generate.below(set.size())].polygon.coordinates();
        point = generate.point({ring.begin(), ring.end()});
      }
      const Indices containing = set.containing(point);
      ASSERT_EQ(containing, containingOneByOne(set, point)) << point.latitude << "," << point.longitude;
      inside += containing.size();
      const double metres = std::pow(10.0, 6.0 * generate.unit());
      const Indices close = set.withVertexWithin(point, metres);
      ASSERT_EQ(close, nearOneByOne(set, point, metres)) << metres;
      near += close.size();
    }
  }
  EXPECT_GT(inside, 5000u);
  EXPECT_GT(near, 10'000u);
}

TEST(PolygonSet, FindsWhatTheGridCannotHold) {
  const double infinity = std::numeric_limits<double>::infinity();
  std::vector<CampaignPolygon> polygons;
  polygons.push_back(
      campaignPolygon(0, {{-80, -170}, {-80, 170}, {80, 170}, {80, -170}}));  // most of the globe
  for (int i = 1; i < 400; ++i) {
    const double at = 0.01 * i;
    polygons.push_back(
        campaignPolygon(i, {{at, at}, {at, at + 0.02}, {at + 0.02, at + 0.02}, {at + 0.02, at}}));
  }
  polygons.push_back(campaignPolygon(400, {{0, -infinity}, {0, infinity}, {9, 1}}));
  polygons.push_back(campaignPolygon(401, {{0, 0}, {9, 0.5}, {-9, 0.5 - 0x1p-53}, {0, 9}}));  // no latitudes
  polygons.push_back(campaignPolygon(402, {}));
  const PolygonSet set(std::move(polygons));
  for (double at = -0.05; at < 4.2; at += 0.0037) {
    const Coordinate point{at, at + 0.001};
    EXPECT_EQ(set.containing(point), containingOneByOne(set, point)) << at;
  }
  EXPECT_EQ(set.containing({-50.0, 0.0}), Indices{0});
  EXPECT_EQ(set.containing({2.015, 2.015}).front(), 0u);  // ascending, wherever they were kept
  EXPECT_TRUE(PolygonSet().containing({0, 0}).empty());
}

}  // namespace
}  // namespace orlan
