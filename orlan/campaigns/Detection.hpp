#pragma once

#include <vector>

#include "orlan/campaigns/GeofenceResult.hpp"
#include "orlan/campaigns/PolygonSet.hpp"
#include "orlan/platform/Location.hpp"

namespace orlan {

class Logger;

/// Decides inside or outside for every polygon of the set and logs how: seven breadcrumbs each. One result a
/// polygon, in the set's order. Any thread.
[[nodiscard]] std::vector<GeofenceResult> detectGeofences(const Location& fix, const PolygonSet& polygons,
                                                          Logger& logger);

}  // namespace orlan
