#pragma once

#include <string>
#include <string_view>

#include "orlan/base/Result.hpp"
#include "orlan/base/json.hpp"

namespace orlan::linuxphone {

/// The root of a property list in XML. Errors are words for a person, with their line where lines can be
/// counted.
[[nodiscard]] Result<json::Value, std::string> readXmlPropertyList(std::string_view bytes);

}  // namespace orlan::linuxphone
