#pragma once

#include <algorithm>
#include <string_view>

/// Characters of protocols and formats, where only ASCII letters have two cases and a digit is '0' to '9'.
/// Unlike the standard's functions these obey no locale and take every char.
namespace orlan::ascii {

[[nodiscard]] constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

[[nodiscard]] constexpr char lowered(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

[[nodiscard]] constexpr bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lowered(x) == lowered(y); });
}

}  // namespace orlan::ascii
