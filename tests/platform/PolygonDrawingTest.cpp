#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "orlan/platform/Polygon.hpp"
#include "platform/PolygonGenerators.hpp"

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
      {"other direction", {{1, 0}, {1, 1}, {0, 1}, {0, 0}}, {0.5, 0.5}, true},
      {"north", square, {1.5, 0.5}, false},
      {"east", square, {0.5, 1.5}, false},
      {"west", square, {0.5, -0.5}, false},
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

TEST(PolygonDrawing, AgreesWithRayCastingOnSmallSimpleRings) {
  test::PolygonGenerator generate(3);
  int differences = 0;
  for (int r = 0; r < 300; ++r) {
    const Ring ring = generate.star(3 + generate.below(30));
    const Polygon polygon(ring);
    for (int i = 0; i < 20; ++i) {
      const double t = 0.05 + 0.9 * generate.unit();  // between the middle of the ring and a vertex's double
      const Coordinate vertex = ring[generate.below(ring.size())];
      Coordinate centre{0, 0};
      for (const Coordinate& c : ring) {
        centre.latitude += c.latitude / static_cast<double>(ring.size());
        centre.longitude += c.longitude / static_cast<double>(ring.size());
      }
      const Coordinate point{centre.latitude + 2 * t * (vertex.latitude - centre.latitude),
                             centre.longitude + 2 * t * (vertex.longitude - centre.longitude)};
      differences += isInside(point, polygon) != polygon.rayCastingContains(point);
    }
  }
  EXPECT_LE(differences, 20);  // edges bend a little between the two projections: 0.3 % of 6000 at most
}

}  // namespace
}  // namespace orlan
