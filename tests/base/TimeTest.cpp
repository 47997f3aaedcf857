#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "orlan/base/Time.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();

TEST(Time, SecondsAreRoundedToTheNearestMicrosecond) {
  struct Row {
    double seconds;
    std::int64_t microseconds;
  };
  const Row rows[] = {
      {-0.3, -300'000},     {6e-7, 1},
      {-6e-7, -1},          {0.0078125, 7'813},  // the whole 7812.5: halves go away from zero
      {-0.0078125, -7'813}, {9.3e12, highest},
      {-infinity, lowest},  {std::numeric_limits<double>::quiet_NaN(), 0},
  };
  for (const Row& row : rows) EXPECT_EQ(fromSeconds(row.seconds).count(), row.microseconds) << row.seconds;
}

TEST(Time, EveryMicrosecondOfFourCenturiesSurvivesBothEpochs) {
  using namespace std::chrono;
  const auto survives = [](TimePoint time) {
    return fromSecondsSince1970(secondsSince1970(time)) == time &&
           fromSecondsSince2001(secondsSince2001(time)) == time;
  };
  for (const TimePoint edge :
       {TimePoint(sys_days(January / 1 / 1800)), TimePoint(sys_days(January / 1 / 2200)),
        TimePoint(sys_days(March / 3 / 2033)) + 54'321s}) {
    for (int i = -2'000; i < 2'000; ++i) ASSERT_TRUE(survives(edge + Duration(i))) << i;
  }
}

TEST(Time, BeyondTheRangeAreItsEnds) {
  EXPECT_EQ(secondsSince2001(TimePoint{}), -978'307'200.0);
  EXPECT_EQ(fromSecondsSince2001(infinity), TimePoint::max());
  EXPECT_EQ(fromSecondsSince2001(-infinity), TimePoint::min() + (fromSecondsSince2001(0.0) - TimePoint{}));
  EXPECT_LT(secondsSince2001(TimePoint::min()), -9.2e12);
  EXPECT_EQ(fromSecondsSince1970(std::nan("")), TimePoint{});
  EXPECT_EQ(elapsed(TimePoint(1s), TimePoint(-2s)), -3s);
  EXPECT_EQ(elapsed(TimePoint(-1us), TimePoint::max()), Duration::max());
  EXPECT_EQ(elapsed(TimePoint(1us), TimePoint::min()), Duration::min());
}

TEST(Time, AsText) {
  struct Row {
    std::int64_t microseconds;
    std::int64_t offset;
    const char* iso;
    const char* local;
    const char* timeOfDay;
  };
  const Row rows[] = {
      {1'741'944'413'123'999, 3'600, "2025-03-14T09:26:53Z", "2025-03-14 10:26:53", "10:26:53.123"},
      {1'741'944'413'000'000, -34'200, "2025-03-14T09:26:53Z", "2025-03-13 23:56:53", "23:56:53.000"},
      {-1, 0, "1969-12-31T23:59:59Z", "1969-12-31 23:59:59", "23:59:59.999"},
      {-62'135'596'800'000'001, 0, "0000-12-31T23:59:59Z", "0000-12-31 23:59:59", "23:59:59.999"},
      {highest, 50'400, "294247-01-10T04:00:54Z", "294247-01-10 18:00:54", "18:00:54.775"},
      {lowest, -50'400, "-290308-12-21T19:59:05Z", "-290308-12-21 05:59:05", "05:59:05.224"},
  };
  for (const Row& row : rows) {
    const TimePoint time{Duration(row.microseconds)};
    const std::chrono::seconds offset(row.offset);
    EXPECT_EQ(isoDateTime(time), row.iso);
    EXPECT_EQ(localDateTime(time, offset), row.local);
    EXPECT_EQ(localTimeOfDay(time, offset), row.timeOfDay);
  }
}

}  // namespace
}  // namespace orlan
