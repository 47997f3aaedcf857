#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

#include "orlan/base/text.hpp"
#include "orlan/platform/Coordinate.hpp"

namespace orlan {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Distance, AgreesWithTheReferenceTableToTheNanometre) {
  std::ifstream file(ORLAN_SOURCE_DIR "/tests/data/geodesic/wgs84-inverse-20.csv");
  std::string line;
  std::getline(file, line);
  int rows = 0;
  while (std::getline(file, line)) {
    std::vector<double> values;
    for (const std::string& cell : text::split(line, ',')) values.push_back(text::toDouble(cell).value());
    ASSERT_EQ(values.size(), 5U) << line;
    const Coordinate a{values[0], values[1]};
    const Coordinate b{values[2], values[3]};
    EXPECT_NEAR(distance(a, b), values[4], 1e-8) << line;
    EXPECT_NEAR(distance(b, a), values[4], 1e-8) << line;
    ++rows;
  }
  EXPECT_EQ(rows, 20);
}

TEST(Distance, IsNotANumberWhereThereIsNoPlace) {
  const Coordinate here{51.5, -0.12};
  const Coordinate nowhere[] = {{notANumber, 0.0}, {0.0, notANumber}, {infinity, 0.0}, {0.0, infinity},
                                {0.0, -infinity},  {90.000001, 0.0},  {-91.0, 0.0}};
  for (const Coordinate& place : nowhere) {
    EXPECT_TRUE(std::isnan(distance(here, place))) << place.latitude << ", " << place.longitude;
    EXPECT_TRUE(std::isnan(distance(place, here))) << place.latitude << ", " << place.longitude;
    EXPECT_TRUE(std::isnan(distance(place, place))) << place.latitude << ", " << place.longitude;
  }
}

}  // namespace
}  // namespace orlan
