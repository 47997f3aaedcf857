#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

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
      {0.0, 0},
      {-0.0, 0},
      {900.0, 900'000'000},
      {0.3, 300'000},
      {-0.3, -300'000},
      {1e-6, 1},
      {4e-7, 0},
      {6e-7, 1},
      {-6e-7, -1},
      {0.0000004999999999999999, 0},
      // 2^-7 and 3 * 2^-7 s are the whole 7812.5 and 23437.5: halves go away from zero.
      {0.0078125, 7'813},
      {-0.0078125, -7'813},
      {0.0234375, 23'438},
      // One step below a half must not be rounded into it first.
      {std::nextafter(0.0078125, 0.0), 7'812},
      {std::nextafter(-0.0078125, 0.0), -7'812},
      {std::nextafter(0.0078125, 1.0), 7'813},
      // Written as halves, but the doubles lie beside them.
      {5e-07, 0},
      {1.5e-06, 2},
      {2.5e-06, 3},
      {3.5e-06, 3},
      {-2.5e-06, -3},
      {0.1234565, 123456},
      {0.9999995, 1000000},
      {763'642'800.123457, 763'642'800'123'457},
      {9e12, 9'000'000'000'000'000'000},
      {9.3e12, highest},
      {-9.3e12, lowest},
      {1e300, highest},
      {-1e300, lowest},
      {infinity, highest},
      {-infinity, lowest},
      {5e-324, 0},
      {std::numeric_limits<double>::quiet_NaN(), 0},
  };
  for (const Row& row : rows) EXPECT_EQ(fromSeconds(row.seconds).count(), row.microseconds) << row.seconds;
}

TEST(Time, EveryMicrosecondOfFourCenturiesSurvivesBothEpochs) {
  using namespace std::chrono;
  const std::int64_t from = TimePoint(sys_days(January / 1 / 1800)).time_since_epoch().count();
  const std::int64_t to = TimePoint(sys_days(January / 1 / 2200)).time_since_epoch().count();
  std::mt19937_64 random(1800);
  std::uniform_int_distribution<std::int64_t> between(from, to);
  const auto survives = [](TimePoint time) {
    return fromSecondsSince1970(secondsSince1970(time)) == time &&
           fromSecondsSince2001(secondsSince2001(time)) == time;
  };
  for (int i = 0; i < 100'000; ++i) {
    const TimePoint time{Duration(between(random))};
    ASSERT_TRUE(survives(time)) << time.time_since_epoch().count();
  }
  for (const std::int64_t edge : {from, to, std::int64_t{0}}) {
    for (std::int64_t i = -2'000; i < 2'000; ++i) ASSERT_TRUE(survives(TimePoint(Duration(edge + i)))) << i;
  }
}

TEST(Time, StoredTimesDifferByWhatTheClockSaid) {
  const TimePoint then = fromSecondsSince2001(763'642'800.3);
  const TimePoint later = then + 900s;
  EXPECT_EQ(fromSecondsSince2001(secondsSince2001(later)) - fromSecondsSince2001(secondsSince2001(then)),
            900s);
}

TEST(Time, EpochsLieThirtyOneYearsApart) {
  EXPECT_EQ(secondsSince2001(TimePoint{}), -978'307'200.0);
  EXPECT_EQ(secondsSince1970(fromSecondsSince2001(0.0)), 978'307'200.0);
}

TEST(Time, BeyondTheRangeAreItsEnds) {
  EXPECT_EQ(fromSecondsSince2001(infinity), TimePoint::max());
  EXPECT_EQ(fromSecondsSince2001(-infinity), TimePoint::min() + (fromSecondsSince2001(0.0) - TimePoint{}));
  EXPECT_EQ(fromSecondsSince1970(-infinity), TimePoint::min());
  EXPECT_LT(secondsSince2001(TimePoint::min()), -9.2e12);
  EXPECT_GT(secondsSince2001(TimePoint::max()), 9.2e12);
  EXPECT_EQ(fromSecondsSince1970(std::nan("")), TimePoint{});
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
      {0, 0, "1970-01-01T00:00:00Z", "1970-01-01 00:00:00", "00:00:00.000"},
      {1'741'944'413'123'999, 3'600, "2025-03-14T09:26:53Z", "2025-03-14 10:26:53", "10:26:53.123"},
      {1'741'944'413'000'000, -34'200, "2025-03-14T09:26:53Z", "2025-03-13 23:56:53", "23:56:53.000"},
      {-1, 0, "1969-12-31T23:59:59Z", "1969-12-31 23:59:59", "23:59:59.999"},
      {951'782'400'000'000, 0, "2000-02-29T00:00:00Z", "2000-02-29 00:00:00", "00:00:00.000"},
      {4'107'542'400'000'000, 0, "2100-03-01T00:00:00Z", "2100-03-01 00:00:00", "00:00:00.000"},
      {1'735'689'599'999'999, 1, "2024-12-31T23:59:59Z", "2025-01-01 00:00:00", "00:00:00.999"},
      {-62'135'596'800'000'000, 0, "0001-01-01T00:00:00Z", "0001-01-01 00:00:00", "00:00:00.000"},
      {-62'135'596'800'000'001, 0, "0000-12-31T23:59:59Z", "0000-12-31 23:59:59", "23:59:59.999"},
      {253'402'300'800'000'000, 0, "10000-01-01T00:00:00Z", "10000-01-01 00:00:00", "00:00:00.000"},
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

TEST(Time, DatesAgreeWithTheStandardCalendar) {
  using namespace std::chrono;
  std::mt19937_64 random(3);
  std::uniform_int_distribution<int> days(-800'000, 2'900'000);
  for (int i = 0; i < 20'000; ++i) {
    const sys_days day{std::chrono::days(days(random))};
    const year_month_day date(day);
    if (static_cast<int>(date.year()) < 0) continue;
    char text[40];
    (void)std::snprintf(text, sizeof text, "%04d-%02u-%02uT00:00:00Z", static_cast<int>(date.year()),
                        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    ASSERT_EQ(isoDateTime(TimePoint(day)), text);
  }
}

}  // namespace
}  // namespace orlan
