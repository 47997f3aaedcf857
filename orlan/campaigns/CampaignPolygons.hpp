#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "orlan/campaigns/CampaignData.hpp"

namespace orlan {

/// The campaign's polygon, its vertices in the backend's order; nothing with fewer than three.
[[nodiscard]] std::optional<Polygon> polygonOf(const CampaignData::Campaign& campaign);

/// The campaigns that have a polygon, in their order. The list shares `data`, which must not be null.
[[nodiscard]] std::vector<CampaignPolygon> campaignPolygons(const std::shared_ptr<const CampaignData>& data);

}  // namespace orlan
