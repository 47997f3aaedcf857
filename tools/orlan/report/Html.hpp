#pragma once

#include <string>
#include <string_view>

namespace orlan::report {

/// Text for HTML and SVG, in elements and in double-quoted attributes: markup characters as references,
/// control characters but line breaks shown as escapes, bytes that are not UTF-8 replaced.
[[nodiscard]] std::string escaped(std::string_view text);

/// A number for SVG: two decimals; 0 when it is not finite.
[[nodiscard]] std::string number(double value);

}  // namespace orlan::report
