#pragma once

#include <optional>
#include <string_view>

#include "orlan/base/Time.hpp"

/// Times as recorded files write them. What is read of a text is taken from it; nothing for another form or
/// for a time that does not exist.
namespace orlan::linuxphone {

/// A whole text such as "2015-12-11T15:43:13.994+01:00" as a time, rounded to the microsecond: seconds may
/// have decimals; the zone is "Z" or an offset, and UTC when it is missing.
[[nodiscard]] std::optional<TimePoint> parseIsoTime(std::string_view text);

/// The start of a day; `form` as for strptime.
[[nodiscard]] std::optional<TimePoint> takeDate(std::string_view& text, const char* form);

/// A time of day with optional decimals behind `form`. A leap second reads as the second after it.
[[nodiscard]] std::optional<Duration> takeTimeOfDay(std::string_view& text, const char* form);

}  // namespace orlan::linuxphone
