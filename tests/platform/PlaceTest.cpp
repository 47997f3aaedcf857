#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "orlan/platform/Place.hpp"

namespace orlan {
namespace {

// The shortcut must never answer differently from measuring, least of all close to the limit.
TEST(Place, ComparesAsTheGeodesicDoes) {
  std::mt19937_64 random(20);
  std::uniform_real_distribution<double> latitude(-90.0, 90.0), longitude(-540.0, 540.0), unit(-1.0, 1.0);
  for (int i = 0; i < 20'000; ++i) {
    const Coordinate a{latitude(random), longitude(random)};
    const double reach = std::pow(10.0, 3.0 * unit(random) - 3.0);  // of a degree: from 0.1 m to 100 km
    Coordinate b{latitude(random), longitude(random)};
    if (i % 4 != 0)
      b = {std::clamp(a.latitude + reach * unit(random), -90.0, 90.0), a.longitude + reach * unit(random)};
    const double exact = distance(a, b);
    for (const double factor : {0.0, 0.5, 0.975, 0.9999, 1.0, 1.0001, 1.015, 2.0, -1.0}) {
      const double limit = exact * factor;
      ASSERT_EQ(compareDistance(Place(a), Place(b), limit), exact <=> limit)
          << a.latitude << " " << a.longitude << " to " << b.latitude << " " << b.longitude << ": " << limit;
    }
  }
}

TEST(Place, LongitudesGoRoundAsOftenAsTheyLike) {
  for (const double turned : {720.0, -3.6e9, 3.6e15}) {
    const Coordinate a{10.0, turned};
    const Coordinate b{10.0, 0.0};
    EXPECT_EQ(compareDistance(Place(a), Place(b), 1.0), distance(a, b) <=> 1.0) << turned;
  }
}

TEST(Place, WhatCannotBeMeasuredIsUnordered) {
  const Place here({51.5, -0.1});
  for (const Coordinate nowhere :
       {Coordinate{std::nan(""), 0.0}, Coordinate{0.0, std::nan("")},
        Coordinate{0.0, std::numeric_limits<double>::infinity()}, Coordinate{90.5, 0.0}}) {
    EXPECT_FALSE(Place(nowhere).measurable());
    EXPECT_EQ(compareDistance(here, Place(nowhere), 1.0), std::partial_ordering::unordered);
  }
  EXPECT_EQ(compareDistance(here, here, std::nan("")), std::partial_ordering::unordered);
  EXPECT_EQ(compareDistance(here, here, 0.0), std::partial_ordering::equivalent);
}

}  // namespace
}  // namespace orlan
