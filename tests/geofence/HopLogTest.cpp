#include <gtest/gtest.h>

#include <limits>

#include "orlan/geofence/HopLog.hpp"

namespace orlan {
namespace {

/// About a metre of latitude near 51 degrees.
constexpr double metre = 1.0 / 111'250.0;

Location north(double metres) {
  return {{51.0 + metres * metre, -0.12}, 5.0, {}};
}

TEST(HopLog, SmallMovementsAddUpToAHopAndGoingBackAndForthDoesNot) {
  HopLog hops;
  for (const double metres : {0.0, 4.0, 8.0, -9.0, 9.0, 0.0, 4.0, 8.0}) {
    (void)hops.logHop(north(metres));
    EXPECT_EQ(hops.lastLoggedLoc(), north(0));
  }
  (void)hops.logHop(north(12));
  EXPECT_EQ(hops.lastLoggedLoc(), north(12));
}

TEST(HopLog, AFixWithoutAPlaceDoesNotHoldTheStart) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  HopLog hops;
  (void)hops.logHop({{nan, nan}, 5.0, {}});
  (void)hops.logHop(north(0));
  EXPECT_EQ(hops.lastLoggedLoc(), north(0));
}

}  // namespace
}  // namespace orlan
