#include "orlan/base/Time.hpp"

#include <fmt/chrono.h>

#include <cmath>
#include <limits>

namespace orlan {
namespace {

constexpr std::int64_t microsecondsPerSecond = 1'000'000;
constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();

constexpr TimePoint epoch2001 = std::chrono::sys_days(std::chrono::January / 1 / 2001);

std::int64_t microseconds(double seconds) {
  if (std::isnan(seconds)) return 0;
  const double magnitude = std::fabs(seconds);
  // The last whole second on either side of the range counts as beyond it: the range is 292,000 years.
  constexpr std::int64_t lastSecond = highest / microsecondsPerSecond;
  if (magnitude >= static_cast<double>(lastSecond)) return seconds < 0 ? lowest : highest;
  const double whole = std::floor(magnitude);
  const std::int64_t count = static_cast<std::int64_t>(whole) * microsecondsPerSecond +
                             std::llround((magnitude - whole) * microsecondsPerSecond);
  return seconds < 0 ? -count : count;
}

/// A time split for display, in whole seconds towards the past.
std::tm civil(TimePoint time, std::chrono::seconds offset) {
  const auto local = std::chrono::floor<std::chrono::seconds>(time) + offset;
  return fmt::gmtime(static_cast<std::time_t>(local.time_since_epoch().count()));
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

Duration elapsed(TimePoint from, TimePoint to) {
  std::int64_t count = 0;
  if (!__builtin_sub_overflow(to.time_since_epoch().count(), from.time_since_epoch().count(), &count)) {
    return Duration(count);
  }
  return from < to ? Duration::max() : Duration::min();
}

double secondsSince2001(TimePoint time) {
  return seconds(elapsed(epoch2001, time));
}

TimePoint fromSecondsSince2001(double seconds) {
  return TimePoint(elapsed(TimePoint(-epoch2001.time_since_epoch()), fromSecondsSince1970(seconds)));
}

std::string isoDateTime(TimePoint time) {
  return fmt::format("{:%Y-%m-%dT%H:%M:%SZ}", civil(time, {}));
}

std::string localDateTime(TimePoint time, std::chrono::seconds offset) {
  return fmt::format("{:%Y-%m-%d %H:%M:%S}", civil(time, offset));
}

std::string localTimeOfDay(TimePoint time, std::chrono::seconds offset) {
  const auto rest = time.time_since_epoch().count() % microsecondsPerSecond;  // of times before 1970 negative
  return fmt::format("{:%H:%M:%S}.{:03}", civil(time, offset),
                     (rest + microsecondsPerSecond) % microsecondsPerSecond / 1'000);
}

}  // namespace orlan
