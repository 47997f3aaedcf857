#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orlan::devbackend {

/// "E621E1F8-C36C-495A-93FC-0C247A3E6E5F": the standard form with upper-case letters.
[[nodiscard]] bool isUuid(std::string_view text);

/// "2025-03-14 09:26:53", and a day and time that exist (a leap second included).
[[nodiscard]] bool isDateTime(std::string_view text);

/// A 64-bit integer in plain decimal form: no plus sign, no leading zeros, no "-0".
[[nodiscard]] bool isPlainInteger(std::string_view text);

/// What is wrong with a latitude (limit 90) or longitude (limit 180) that must be written as the shortest
/// decimal text that reads back as the same double; nothing when all is well.
[[nodiscard]] std::optional<std::string> degreesProblem(std::string_view text, double limit);

}  // namespace orlan::devbackend
