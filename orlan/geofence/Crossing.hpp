#pragma once

#include <cstdint>
#include <utility>

namespace orlan {

/// Whose area was entered or left: campaign id and location id.
using Crossing = std::pair<std::int64_t, std::int64_t>;

}  // namespace orlan
