#pragma once

#include <string>

#include "orlan/base/Result.hpp"
#include "orlan/base/json.hpp"

namespace orlan {

/// A value as the body of a request. Fails when a text in it is not UTF-8: what a host hands over is sent as
/// it is or not at all.
[[nodiscard]] Result<std::string> jsonBody(const json::Value& value);

}  // namespace orlan
