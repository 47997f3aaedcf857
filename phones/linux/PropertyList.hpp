#pragma once

#include <string>
#include <string_view>

#include "orlan/base/Result.hpp"
#include "orlan/base/json.hpp"

namespace orlan::linuxphone {

/// The dictionary in a property list, in XML (any encoding that XML can name, with or without a byte-order
/// mark) or binary form, whose reals keep seven decimals. Of duplicate keys the last wins. Data becomes
/// bytes, a date its ISO 8601 text, an integer beyond the signed range a double.
///
/// Anything else is an error of one line (domain "PropertyList", code -1): no property list, a mistake
/// inside, a root that is no dictionary, more than `longestPropertyList` bytes, deeper than a hundred levels.
[[nodiscard]] Result<json::Object> parsePropertyList(std::string_view bytes);

/// The same of a file; the error begins with `path`.
[[nodiscard]] Result<json::Object> readPropertyList(const std::string& path);

inline constexpr std::size_t longestPropertyList = std::size_t{128} << 10;

}  // namespace orlan::linuxphone
