#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "orlan/platform/Polygon.hpp"
#include "orlan/platform/VertexDistance.hpp"
#include "platform/PolygonGenerators.hpp"

namespace orlan {
namespace {

using Ring = std::vector<Coordinate>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(PolygonVicinity, ComparesTheGeodesicDistanceToVerticesOnly) {
  const Ring square{{51.5, -0.12}, {51.5, -0.11}, {51.51, -0.11}, {51.51, -0.12}};
  struct Row {
    const char* name;
    Ring ring;
    Coordinate point;
    double metres;
    bool near;
  };
  const std::vector<Row> rows{
      {"on a vertex", square, {51.5, -0.12}, 0.0, true},
      {"14.9 m south", square, {51.5 - 14.9 / 111'257.0, -0.12}, 15.0, true},
      {"16 m south", square, {51.5 - 16.0 / 111'257.0, -0.12}, 15.0, false},
      {"beside the middle of an edge", square, {51.49999, -0.115}, 100.0, false},
      {"across the date line", {{0.0, 179.9999}}, {0.0, -179.9999}, 23.0, true},
      {"across the date line, too far", {{0.0, 179.9999}}, {0.0, -179.9999}, 22.0, false},
      {"a longitude that went around", {{0.0, 360.0001}}, {0.0, 0.0}, 12.0, true},
      {"across the pole", {{89.9999, 180.0}}, {89.9999, 0.0}, 23.0, true},
      {"one of many", {{0, 0}, {nan, nan}, {10, 10}}, {10.0, 10.0}, 1.0, true},
      {"vertex without a place", {{nan, 0}, {0, infinity}, {91, 0}}, {0.0, 0.0}, infinity, false},
      {"point without a place", square, {nan, -0.12}, infinity, false},
      {"point beyond the pole", {{90.0, 0.0}}, {90.000001, 0.0}, 1000.0, false},
      {"the whole globe", square, {-51.5, 179.0}, infinity, true},
      {"negative", square, {51.5, -0.12}, -1.0, false},
      {"not a number", square, {51.5, -0.12}, nan, false},
      {"no vertices", {}, {0.0, 0.0}, 1e9, false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Polygon(row.ring).hasVertexWithin(row.point, row.metres), row.near) << row.name;
  }
}

/// Radii from far below to far above the true distance, thickest around it, where bounds cannot decide.
double radiusAround(double metres, test::PolygonGenerator& generate) {
  const double sign = generate.below(2) == 0 ? -1.0 : 1.0;
  switch (generate.below(4)) {
    case 0:
      return metres;
    case 1:
      return metres + sign * std::pow(10.0, -9.0 + 4.0 * generate.unit());
    case 2:
      return metres * (1.0 + sign * std::pow(10.0, -10.0 + 10.0 * generate.unit()));
    default:
      return std::pow(10.0, 7.0 * generate.unit());
  }
}

TEST(PolygonVicinity, NeverDecidesDifferentlyFromTheDistanceItself) {
  test::PolygonGenerator generate(99);
  int near = 0;
  for (int i = 0; i < 20'000; ++i) {
    const double latitude =
        generate.below(4) == 0 ? 90.0 - 0.2 * generate.unit() : 178.0 * generate.unit() - 89.0;
    const Coordinate point{latitude, 360.0 * generate.unit() - 180.0};
    const double spread = std::pow(10.0, 5.0 * generate.unit() - 5.0);
    const Coordinate vertex{
        latitude + spread * (generate.unit() - 0.5),
        point.longitude + spread * (generate.unit() - 0.5) + (generate.below(9) == 0 ? 360.0 : 0.0)};
    const double exact = distance(point, vertex);
    const double metres = radiusAround(std::isnan(exact) ? 1.0 : exact, generate);
    const Vicinity vicinity(point, metres);
    const bool expected = exact <= metres;
    ASSERT_EQ(vicinity.contains(vertex), expected)
        << point.latitude << "," << point.longitude << " to " << vertex.latitude << "," << vertex.longitude
        << " within " << metres << ", exactly " << exact;
    ASSERT_EQ(Polygon({vertex}).hasVertexIn(vicinity), expected);
    near += expected;
  }
  EXPECT_GT(near, 5000);
  EXPECT_LT(near, 15'000);
}

}  // namespace
}  // namespace orlan
