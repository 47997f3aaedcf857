#pragma once

#include <optional>
#include <string_view>

#include "orlan/base/Time.hpp"

namespace orlan::linuxphone {

/// A whole text such as "2015-12-11T15:43:13.994+01:00" as a time, rounded to the microsecond: seconds may
/// have decimals; the zone is "Z" or an offset, and UTC when it is missing. Nothing when it is not of that
/// form or no such time exists.
[[nodiscard]] std::optional<TimePoint> parseIsoTime(std::string_view text);

/// Seconds with optional decimals ("13", "13.994"), below 61; half-way decimals rounded up. A leap second
/// reads as the second after it.
[[nodiscard]] std::optional<Duration> parseSeconds(std::string_view text);

/// `digits` ASCII digits in front of `text`, which then loses them.
[[nodiscard]] std::optional<int> takeNumber(std::string_view& text, std::size_t digits);

}  // namespace orlan::linuxphone
