#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/platform/Circle.hpp"

/// From polygons to the few circles that an operating system watches for an application. Pure functions; none
/// is upset by coordinates that are not finite or off the globe.
namespace orlan::regionSelection {

/// How many circles an operating system watches for an application.
inline constexpr std::size_t mostRegions = 20;

/// About the mean of the vertices, in plain degrees (not for rings across 180 degrees), as far as the
/// farthest vertex. Nothing without vertices, or when one of them is no place on the globe.
[[nodiscard]] std::optional<Circle> circleForVertices(std::span<const Coordinate> vertices);

/// Metres, at least 100 and at most 1000.
[[nodiscard]] double clampedRadius(double radius);

/// By the distance of their circles' centres from `from`, nearest first; equal distances, and those without a
/// circle at the end, in the order given.
[[nodiscard]] std::vector<CampaignPolygon> sortedByProximity(const std::vector<CampaignPolygon>& polygons,
                                                             Coordinate from);

}  // namespace orlan::regionSelection
