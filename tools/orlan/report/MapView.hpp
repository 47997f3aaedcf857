#pragma once

#include <string>

#include "tools/orlan/report/ReportData.hpp"

namespace orlan::report {

/// The map as one SVG element: areas, circles, the track, and numbered marks where entries, exits and
/// notifications happened. It shows the track with a margin; with no fix it shows all areas. Coordinates that
/// are not finite are left out.
[[nodiscard]] std::string mapView(const ReportData& data);

}  // namespace orlan::report
