#include "orlan/campaigns/CampaignPolygons.hpp"

#include <utility>

namespace orlan {

std::optional<Polygon> polygonOf(const CampaignData::Campaign& campaign) {
  const auto& ring = campaign.location.geofence;
  if (ring.size() < 3) return std::nullopt;
  std::vector<Coordinate> vertices;
  vertices.reserve(ring.size());
  for (const GeofencePoint& point : ring) vertices.push_back({point.latitude(), point.longitude()});
  return Polygon(std::move(vertices));
}

std::vector<CampaignPolygon> campaignPolygons(const std::shared_ptr<const CampaignData>& data) {
  std::vector<CampaignPolygon> polygons;
  for (const auto& campaign : data->campaignsArray) {
    if (auto polygon = polygonOf(campaign)) {
      polygons.push_back({std::move(*polygon), SharedCampaign(data, campaign)});
    }
  }
  return polygons;
}

}  // namespace orlan
