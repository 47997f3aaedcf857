#pragma once

#include <optional>

#include "orlan/base/json.hpp"
#include "orlan/platform/Coordinate.hpp"

namespace orlan::devbackend {

/// An answer to /check-geofence: one campaign in each of the nine squares of some 450 metres around
/// `position`, its texts and identifiers decided by the square alone, so that a walker who asks again finds
/// the same campaigns where they were, also after the backend has been started anew. Empty lists when the
/// position is absent, not finite or beyond the globe. `push` adds one campaign without a place.
[[nodiscard]] json::Value campaignsAround(std::optional<Coordinate> position, bool push);

}  // namespace orlan::devbackend
