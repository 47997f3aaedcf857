#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace orlan {

/// Whole microseconds: two stored times differ by exactly what the clock said, so that a limit of 900 s holds
/// at 900 s and not a rounding error beside it.
using Duration = std::chrono::microseconds;

/// Wall-clock time, microseconds since 1970-01-01 00:00:00 UTC. The wall clock may jump either way.
using TimePoint = std::chrono::sys_time<Duration>;

/// Seconds as a double, for texts and for the wire.
[[nodiscard]] double seconds(Duration duration);

/// A duration from seconds, rounded to the microsecond. NaN gives zero; beyond the range, its ends.
[[nodiscard]] Duration fromSeconds(double seconds);

/// `to - from`, or the end of the range where that would overflow: a stored time may be anything.
[[nodiscard]] Duration elapsed(TimePoint from, TimePoint to);

/// Seconds since 1970-01-01 and since 2001-01-01, both UTC, and back. Going there and back gives the same
/// microsecond for every time between the years 1800 and 2200. NaN gives the epoch; beyond the range, its
/// ends.
[[nodiscard]] double secondsSince1970(TimePoint time);
[[nodiscard]] TimePoint fromSecondsSince1970(double seconds);
[[nodiscard]] double secondsSince2001(TimePoint time);
[[nodiscard]] TimePoint fromSecondsSince2001(double seconds);

/// "2025-03-14T09:26:53Z": UTC, whole seconds (towards the past).
[[nodiscard]] std::string isoDateTime(TimePoint time);

/// "2025-03-14 09:26:53" and "09:26:53.123": local time, `offset` east of UTC.
[[nodiscard]] std::string localDateTime(TimePoint time, std::chrono::seconds offset);
[[nodiscard]] std::string localTimeOfDay(TimePoint time, std::chrono::seconds offset);

}  // namespace orlan
