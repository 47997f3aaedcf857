#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "orlan/platform/Polygon.hpp"

namespace orlan {
namespace {

using Ring = std::vector<Coordinate>;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(PolygonDrawing, FillsByTheNonZeroWindingRule) {
  const Ring square{{0, 0}, {0, 1}, {1, 1}, {1, 0}};
  struct Row {
    const char* name;
    Ring ring;
    Coordinate point;
    bool inside;
  };
  const std::vector<Row> rows{
      {"middle", square, {0.5, 0.5}, true},
      {"north", square, {1.5, 0.5}, false},
      {"east", square, {0.5, 1.5}, false},
      {"twice around stays inside",
       {{0, 0}, {0, 1}, {1, 1}, {1, 0}, {0, 0}, {0, 1}, {1, 1}, {1, 0}},
       {0.5, 0.5},
       true},
      {"pentagram's middle", {{1, 0}, {-0.8, 0.6}, {0.3, -0.95}, {0.3, 0.95}, {-0.8, -0.6}}, {0, 0}, true},
      {"straight on the map is not straight in degrees", {{0, 0}, {80, 80}, {0, 80}}, {42.0, 40.0}, true},
      {"straight on the map, beyond it", {{0, 0}, {80, 80}, {0, 80}}, {58.0, 40.0}, false},
      {"up to the pole", {{80, 0}, {90, 0}, {90, 10}, {80, 10}}, {89.0, 5.0}, true},
      {"no place", square, {nan, 0.5}, false},
      {"no longitude", square, {0.5, nan}, false},
      {"no vertices", {}, {0, 0}, false},
  };
  for (const Row& row : rows) EXPECT_EQ(isInside(row.point, Polygon(row.ring)), row.inside) << row.name;
}

}  // namespace
}  // namespace orlan
