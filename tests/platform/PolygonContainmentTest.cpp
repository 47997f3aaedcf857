#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "orlan/platform/Polygon.hpp"
#include "platform/PolygonGenerators.hpp"

namespace orlan {
namespace {

using Ring = std::vector<Coordinate>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double tiny = std::numeric_limits<double>::denorm_min();

/// The formula once more, from its description and sharing nothing with the library.
bool plainLoop(const Ring& v, double lat, double lon) {
  const std::size_t n = v.size();
  if (n < 3) return false;
  bool inside = false;
  for (std::size_t i = 0, j = n - 1; i < n; j = i++) {
    const double yi = v[i].longitude, yj = v[j].longitude, xi = v[i].latitude, xj = v[j].latitude;
    if ((yi > lon) != (yj > lon)) {
      const double crossing = (lon - yi) * (xj - xi) / ((yj - yi) + 2.220446049250313e-16) + xi;
      if (crossing > lat) inside = !inside;
    }
  }
  return inside;
}

std::string describe(const Ring& ring, Coordinate point) {
  std::string text;
  char buffer[80];
  for (const Coordinate& c : ring) {
    std::snprintf(buffer, sizeof buffer, "{%a, %a}, ", c.latitude, c.longitude);
    text += buffer;
  }
  std::snprintf(buffer, sizeof buffer, "point {%a, %a}", point.latitude, point.longitude);
  return text + buffer;
}

/// Every promise about one ring and one point; counts the points inside.
bool agrees(const Ring& ring, const Polygon& polygon, Coordinate point) {
  const bool expected = plainLoop(ring, point.latitude, point.longitude);
  const auto box = polygon.box();
  const bool inBox = box.longitude.min <= point.longitude && point.longitude < box.longitude.max &&
                     box.minLatitude <= point.latitude && point.latitude < box.maxLatitude;
  return rayCastingContains(ring, point) == expected && polygon.rayCastingContains(point) == expected &&
         (inBox || !expected);
}

TEST(PolygonContainment, FollowsTheFormulaOnTheGroundAndTheWindingRuleOnTheMap) {
  const Ring square{{0, 0}, {0, 1}, {1, 1}, {1, 0}};
  const Ring twiceAround{{0, 0}, {0, 1}, {1, 1}, {1, 0}, {0, 0}, {0, 1}, {1, 1}, {1, 0}};
  const Ring horseshoe{{0, 0}, {0, 3}, {3, 3}, {3, 2}, {1, 2}, {1, 1}, {3, 1}, {3, 0}};
  const Ring north{{0, 0}, {80, 80}, {0, 80}};
  constexpr std::nullopt_t outline = std::nullopt;  // where the drawing may say either
  struct Row {
    const char* name;
    Ring ring;
    Coordinate point;
    bool inside;
    std::optional<bool> drawn;
  };
  const std::vector<Row> rows{
      {"middle", square, {0.5, 0.5}, true, true},
      {"north of it", square, {1.5, 0.5}, false, false},
      {"east of it", square, {0.5, 1.5}, false, false},
      {"longitude of the western corners counts as inside", square, {0.5, 0.0}, true, outline},
      {"longitude of the eastern corners does not", square, {0.5, 1.0}, false, outline},
      {"on the southern edge", square, {0.0, 0.5}, true, outline},
      {"on the northern edge", square, {1.0, 0.5}, false, outline},
      {"no latitude", square, {nan, 0.5}, false, false},
      {"no longitude", square, {0.5, nan}, false, false},
      {"between the arms", horseshoe, {2.0, 1.5}, false, false},
      {"a ray through a spike's vertex toggles once", {{0, 0}, {2, 1}, {0, 2}}, {0.5, 1.0}, true, true},
      {"two vertices", {{0, 0}, {1, 1}}, {0.5, 0.5}, false, outline},
      {"no vertices", {}, {0, 0}, false, false},
      {"twice around", twiceAround, {0.5, 0.5}, false, true},
      {"straight in degrees is not straight on the map", north, {42.0, 40.0}, false, true},
      {"beyond both", north, {58.0, 40.0}, false, false},
      {"up to the pole", {{80, 0}, {90, 0}, {90, 10}, {80, 10}}, {89.0, 5.0}, true, true},
  };
  for (const Row& row : rows) {
    const Polygon polygon(row.ring);
    EXPECT_EQ(polygon.rayCastingContains(row.point), row.inside) << row.name;
    EXPECT_TRUE(agrees(row.ring, polygon, row.point)) << row.name;
    if (row.drawn) {
      EXPECT_EQ(isInside(row.point, polygon), *row.drawn) << row.name << ", drawn";
    }
  }
}

TEST(PolygonContainment, AgreesWithThePlainLoopOnRingsThatAreHardOnShortcuts) {
  const double sliver = 0x1p-53;
  const std::vector<Ring> rings{
      {{nan, nan}, {nan, nan}, {nan, nan}},
      {{0, 0}, {nan, 0.5}, {0, 1}, {1, 1}, {1, 0}},
      {{0, 0}, {0, nan}, {0, 1}, {1, 1}, {1, 0}},
      {{0, -infinity}, {0, infinity}, {1, 0.5}},
      {{-infinity, 0}, {infinity, 1}, {0, 2}},
      {{0, 0}, {1, 0.5}, {-1, 0.5 - sliver}, {0, 1}},      // falling by less than the constant
      {{0, 0}, {1, 0.5}, {-1, 0.5 - 2 * sliver}, {0, 1}},  // the divisor is exactly zero
      {{0, 0}, {1, 0.5 - sliver}, {-1, 0.5}, {0, 1}},      // rising by as little
      {{0, 0}, {5, 1e-9}, {-5, 0}, {0, -1}},               // the steepest falling edge with a latitude box
      {{0, 0}, {5, 0.99e-9}, {-5, 0}, {0, -1}},            // and one without
      {{0, 1}, {tiny, 0.5}, {3 * tiny, 0}, {-tiny, -1}},   // products that underflow
      {{1e300, 0}, {-1e300, 1}, {1e300, 2}},               // differences that overflow
      {{0, 1e300}, {1, -1e300}, {2, 1.7e308}, {3, -1.7e308}},  // longitudes too far apart to be cut
      {{2, 2}, {2, 2}, {2, 2}, {2, 2}},
      {{0, 0}, {0, tiny}, {1, tiny}, {1, 0}},
      {{0, -0.0}, {1, 0.0}, {2, -0.0}, {0, 1}},
  };
  test::PolygonGenerator generate(7);
  for (std::size_t r = 0; r < rings.size(); ++r) {
    const Polygon polygon(rings[r]);
    for (int i = 0; i < 2000; ++i) {
      const Coordinate point = generate.point(rings[r]);
      ASSERT_TRUE(agrees(rings[r], polygon, point)) << "ring " << r << ": " << describe(rings[r], point);
    }
  }
}

TEST(PolygonContainment, HoldsWhereRoundingPutsThePointBeyondEveryVertex) {
  // The constant stretches a narrow falling edge past its end; a product that underflows rounds up past it.
  const Ring stretched{{-5, 0}, {5, 1e-9}, {5, 2e-9}};
  const Ring underflowing{{6e8 * tiny, 1e-9}, {0, 0}, {0, -1e-9}};
  for (const auto& [ring, point] : {std::pair{stretched, Coordinate{-5.000001, 0}},
                                    std::pair{underflowing, Coordinate{8e8 * tiny, 0.99e-9}}}) {
    EXPECT_TRUE(plainLoop(ring, point.latitude, point.longitude)) << describe(ring, point);
    EXPECT_TRUE(agrees(ring, Polygon(ring), point)) << describe(ring, point);
  }
}

TEST(PolygonContainment, AgreesWithThePlainLoopOnAMillionPairs) {
  test::PolygonGenerator generate(20'260'101);
  int inside = 0;
  for (int r = 0; r < 10'000; ++r) {
    const Ring ring = generate.ring();
    const Polygon polygon(ring);
    for (int i = 0; i < 100; ++i) {
      const Coordinate point = generate.point(ring);
      ASSERT_TRUE(agrees(ring, polygon, point)) << describe(ring, point);
      inside += polygon.rayCastingContains(point);
    }
  }
  EXPECT_GT(inside, 100'000);  // the pairs are worth something
  EXPECT_LT(inside, 500'000);
}

TEST(PolygonContainment, KeepsMemoryLinearForRingsThatRunToAndFro) {
  Ring ring;
  for (int i = 0; i < 200'000; ++i) ring.push_back({i * 1e-6, i % 2 == 0 ? -1.0 : 1.0});
  const Polygon polygon(ring);  // a bin for every second vertex would take 80 GB
  for (const double latitude : {-0.1, 0.05, 0.1, 0.15, 0.3}) {
    EXPECT_TRUE(agrees(ring, polygon, {latitude, 0.123})) << latitude;
  }
}

TEST(PolygonBoxes, AreTightAndAWayOutWhereTheyCannotBe) {
  const Polygon square({{1, 10}, {1, 11}, {2, 11}, {2, 10}});
  EXPECT_NEAR(square.box().minLatitude, 1.0, 1e-5);
  EXPECT_NEAR(square.box().maxLatitude, 2.0, 1e-5);
  EXPECT_EQ(square.vertexBox().minLatitude, 1.0);
  EXPECT_EQ(square.vertexBox().longitude.max, 11.0);
  EXPECT_EQ(Polygon({{0, 0}, {1, 1e-10}, {2, 0}}).box().maxLatitude, infinity) << "too steep";
  const Polygon line({{1, 10}, {1, 11}});  // nothing is inside
  EXPECT_EQ(line.box().longitude.min, line.box().longitude.max);
}

TEST(PolygonValue, EqualsItsCopiesAndTheSameVerticesInOrder) {
  const Ring ring{{0, 0}, {0, 1}, {1, 1}};
  EXPECT_EQ(Polygon(ring), Polygon(ring));
  EXPECT_NE(Polygon(ring), Polygon({{0, 1}, {1, 1}, {0, 0}}));
  const Polygon unequalToItself({{nan, 0}, {0, 1}, {1, 1}});
  EXPECT_EQ(unequalToItself, Polygon(unequalToItself));  // the same object all the same
}

}  // namespace
}  // namespace orlan
