#pragma once

#include <string>
#include <vector>

#include "orlan/base/json.hpp"

namespace orlan {

/// What a host behind a language bridge hands over as a list of texts: anything but an array wholly made of
/// strings is the empty list.
[[nodiscard]] std::vector<std::string> stringsFromBridged(const json::Value& value);

}  // namespace orlan
