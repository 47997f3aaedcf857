#include <gtest/gtest.h>

#include <limits>
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

TEST(PolygonContainment, FollowsTheFormulaOnTheGround) {
  const Ring square{{0, 0}, {0, 1}, {1, 1}, {1, 0}};
  const Ring horseshoe{{0, 0}, {0, 3}, {3, 3}, {3, 2}, {1, 2}, {1, 1}, {3, 1}, {3, 0}};
  struct Row {
    const char* name;
    Ring ring;
    Coordinate point;
    bool inside;
  };
  const std::vector<Row> rows{
      {"middle", square, {0.5, 0.5}, true},
      {"east of it", square, {0.5, 1.5}, false},
      {"longitude of the western corners counts as inside", square, {0.5, 0.0}, true},
      {"longitude of the eastern corners does not", square, {0.5, 1.0}, false},
      {"on the southern edge", square, {0.0, 0.5}, true},
      {"on the northern edge", square, {1.0, 0.5}, false},
      {"nowhere", square, {nan, 0.5}, false},
      {"between the arms", horseshoe, {2.0, 1.5}, false},
      {"a ray through a spike's vertex toggles once", {{0, 0}, {2, 1}, {0, 2}}, {0.5, 1.0}, true},
      {"two vertices", {{0, 0}, {1, 1}}, {0.5, 0.5}, false},
      {"twice around is outside again",
       {{0, 0}, {0, 1}, {1, 1}, {1, 0}, {0, 0}, {0, 1}, {1, 1}, {1, 0}},
       {0.5, 0.5},
       false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Polygon(row.ring).rayCastingContains(row.point), row.inside) << row.name;
    EXPECT_TRUE(agrees(row.ring, Polygon(row.ring), row.point)) << row.name;
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

TEST(PolygonBoxes, SayWhereNothingCanBe) {
  const Polygon square({{1, 10}, {1, 11}, {2, 11}, {2, 10}});
  EXPECT_EQ(square.box().longitude.min, 10.0);
  EXPECT_EQ(square.box().longitude.max, 11.0);
  EXPECT_NEAR(square.box().minLatitude, 1.0, 1e-5);
  EXPECT_NEAR(square.box().maxLatitude, 2.0, 1e-5);
  EXPECT_EQ(square.vertexBox().minLatitude, 1.0);

  const Polygon line({{1, 10}, {1, 11}});  // nothing is inside, but its vertices are somewhere
  EXPECT_EQ(line.box().longitude.min, line.box().longitude.max);
  EXPECT_EQ(line.vertexBox().longitude.max, 11.0);

  const Polygon steep({{0, 0}, {1, 1e-10}, {2, 0}});
  EXPECT_EQ(steep.box().minLatitude, -infinity);
  EXPECT_EQ(steep.box().maxLatitude, infinity);

  EXPECT_GT(Polygon({{nan, 1}, {91, 2}, {0, infinity}}).vertexBox().minLatitude, 90.0);
}

TEST(PolygonValue, KeepsItsVerticesInOrderAndSharesThemWithItsCopies) {
  const Ring ring{{0, 0}, {0, 1}, {1, 1}};
  const Polygon polygon(ring);
  const Polygon copy = polygon;  // NOLINT(performance-unnecessary-copy-initialization)
  EXPECT_EQ(Ring(polygon.coordinates().begin(), polygon.coordinates().end()), ring);
  EXPECT_EQ(copy.coordinates().data(), polygon.coordinates().data());
  EXPECT_EQ(polygon, Polygon(ring));
  EXPECT_NE(polygon, Polygon({{0, 1}, {1, 1}, {0, 0}}));
  const Polygon unequalToItself({{nan, 0}, {0, 1}, {1, 1}});
  EXPECT_EQ(unequalToItself, Polygon(unequalToItself));  // the same object all the same
  EXPECT_EQ(Polygon().pointCount(), 0u);
}

}  // namespace
}  // namespace orlan
