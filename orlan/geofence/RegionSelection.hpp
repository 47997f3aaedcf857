#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/platform/Circle.hpp"

/// From polygons to the few circles that an operating system watches for an application. Pure functions; none
/// is upset by coordinates that are not finite or off the globe.
namespace orlan::regionSelection {

/// How many circles an operating system watches for an application.
inline constexpr std::size_t mostRegions = 20;

/// About the polygon's centre as far as the farthest vertex, but at least 100 metres and at most 1000.
/// Nothing when the centre is not measurable.
[[nodiscard]] std::optional<Circle> circleFor(const Polygon& polygon);

/// The `mostRegions` first by the distance of the centre from `from`, nearest first; equal distances, and
/// those without a centre at the end, in the order given.
///
/// Measures few of them. Let c be the chord (`squaredChord`) of the last among the nearest by chord. As many
/// as are wanted have a chord up to c, so whoever is surely farther than these is not wanted. Only the others
/// are measured and sorted, and no bound decides between two of them.
[[nodiscard]] std::vector<CampaignPolygon> nearest(const std::vector<CampaignPolygon>& polygons,
                                                   Coordinate from);

}  // namespace orlan::regionSelection
