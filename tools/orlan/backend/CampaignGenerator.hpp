#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "orlan/base/json.hpp"
#include "orlan/platform/Coordinate.hpp"

namespace orlan::devbackend {

/// A square of the globe of about 450 metres, the ground on which campaigns are made up. Row 0 begins at the
/// south pole, column 0 at 180 degrees west; columns are narrower in degrees near the equator.
struct Cell {
  std::int64_t row = 0;
  std::int64_t column = 0;

  friend bool operator==(const Cell&, const Cell&) = default;
};

[[nodiscard]] Cell cellAt(Coordinate position);
[[nodiscard]] Coordinate centreOf(Cell cell);

/// An answer to /check-geofence: one campaign in each of the nine cells around `position`, with its shape,
/// texts and identifiers decided by the cell alone, so that a walker who asks again finds the same campaigns
/// where they were, also after the backend has been started anew. Empty lists when the position is absent,
/// not finite or beyond the globe. `push` adds one campaign without a place.
[[nodiscard]] json::Value campaignsAround(std::optional<Coordinate> position, bool push);

}  // namespace orlan::devbackend
