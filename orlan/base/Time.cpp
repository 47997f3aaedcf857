#include "orlan/base/Time.hpp"

#include <fmt/format.h>

#include <cmath>
#include <limits>

namespace orlan {
namespace {

constexpr std::int64_t microsecondsPerSecond = 1'000'000;
constexpr std::int64_t secondsPerDay = 86'400;
constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();

constexpr TimePoint epoch2001 = std::chrono::sys_days(std::chrono::January / 1 / 2001);

std::int64_t saturatingSum(std::int64_t a, std::int64_t b) {
  if (b > 0 && a > highest - b) return highest;
  if (b < 0 && a < lowest - b) return lowest;
  return a + b;
}

std::int64_t floorDivided(std::int64_t a, std::int64_t b) {
  return a / b - (a % b < 0 ? 1 : 0);
}
std::int64_t floorRest(std::int64_t a, std::int64_t b) {
  return a % b + (a % b < 0 ? b : 0);
}

/// `fraction` (0 <= fraction < 1) of a second in whole microseconds, halves upwards. The product is rounded
/// before we round it; what it lost decides when it seems to lie exactly on a half.
std::int64_t roundedMicroseconds(double fraction) {
  const double product = fraction * microsecondsPerSecond;
  const double lost = std::fma(fraction, static_cast<double>(microsecondsPerSecond), -product);
  const double whole = std::floor(product);
  const double rest = product - whole;
  const bool up = rest > 0.5 || (rest == 0.5 && lost >= 0.0);
  return static_cast<std::int64_t>(whole) + (up ? 1 : 0);
}

std::int64_t microseconds(double seconds) {
  if (std::isnan(seconds)) return 0;
  const double magnitude = std::fabs(seconds);
  // The last whole second on either side of the range counts as beyond it: the range is 292,000 years.
  constexpr std::int64_t lastSecond = highest / microsecondsPerSecond;
  if (magnitude >= static_cast<double>(lastSecond)) return seconds < 0 ? lowest : highest;
  const double whole = std::floor(magnitude);
  const std::int64_t count =
      static_cast<std::int64_t>(whole) * microsecondsPerSecond + roundedMicroseconds(magnitude - whole);
  return seconds < 0 ? -count : count;
}

/// A time split for display. Own arithmetic: the standard's calendar ends at year 32767, a `TimePoint` does
/// not.
struct Civil {
  std::int64_t year;
  int month, day, hour, minute, second, millisecond;
};

Civil civil(TimePoint time, std::chrono::seconds offset) {
  const std::int64_t count = time.time_since_epoch().count();
  const std::int64_t local =
      floorDivided(count, microsecondsPerSecond) + static_cast<std::int64_t>(offset.count());
  const std::int64_t dayNumber = floorDivided(local, secondsPerDay);
  const int secondOfDay = static_cast<int>(floorRest(local, secondsPerDay));

  // Years begin in March here, so that the leap day is the last of its year; eras have 400 years.
  const std::int64_t shifted = dayNumber + 719'468;
  const std::int64_t era = floorDivided(shifted, 146'097);
  const std::int64_t dayOfEra = floorRest(shifted, 146'097);
  const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1'460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
  const int dayOfYear = static_cast<int>(dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100));
  const int marchMonth = (5 * dayOfYear + 2) / 153;
  const int day = dayOfYear - (153 * marchMonth + 2) / 5 + 1;
  const int month = marchMonth < 10 ? marchMonth + 3 : marchMonth - 9;
  const std::int64_t year = era * 400 + yearOfEra + (month <= 2 ? 1 : 0);

  return {year,
          month,
          day,
          secondOfDay / 3'600,
          secondOfDay / 60 % 60,
          secondOfDay % 60,
          static_cast<int>(floorRest(count, microsecondsPerSecond) / 1'000)};
}

}  // namespace

double seconds(Duration duration) {
  return static_cast<double>(duration.count()) / static_cast<double>(microsecondsPerSecond);
}

Duration fromSeconds(double seconds) {
  return Duration(microseconds(seconds));
}

double secondsSince1970(TimePoint time) {
  return seconds(time.time_since_epoch());
}

TimePoint fromSecondsSince1970(double seconds) {
  return TimePoint(fromSeconds(seconds));
}

double secondsSince2001(TimePoint time) {
  return seconds(
      Duration(saturatingSum(time.time_since_epoch().count(), -epoch2001.time_since_epoch().count())));
}

TimePoint fromSecondsSince2001(double seconds) {
  return TimePoint(Duration(saturatingSum(microseconds(seconds), epoch2001.time_since_epoch().count())));
}

std::string isoDateTime(TimePoint time) {
  const Civil c = civil(time, {});
  return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", c.year, c.month, c.day, c.hour, c.minute,
                     c.second);
}

std::string localDateTime(TimePoint time, std::chrono::seconds offset) {
  const Civil c = civil(time, offset);
  return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", c.year, c.month, c.day, c.hour, c.minute,
                     c.second);
}

std::string localTimeOfDay(TimePoint time, std::chrono::seconds offset) {
  const Civil c = civil(time, offset);
  return fmt::format("{:02}:{:02}:{:02}.{:03}", c.hour, c.minute, c.second, c.millisecond);
}

}  // namespace orlan
