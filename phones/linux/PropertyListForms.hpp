#pragma once

#include <string>
#include <string_view>

#include "orlan/base/Result.hpp"
#include "orlan/base/json.hpp"

/// The two forms of a property list, each read into a value. Errors are words for a person.
namespace orlan::linuxphone::plist {

inline constexpr int deepest = 100;  // levels

[[nodiscard]] Result<json::Value, std::string> readXml(std::string_view bytes);

/// `bytes` is at most `longestPropertyList` long: the reader behind it follows nested objects on the stack.
[[nodiscard]] Result<json::Value, std::string> readBinary(std::string_view bytes);

}  // namespace orlan::linuxphone::plist
