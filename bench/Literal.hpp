#pragma once

#include <string>
#include <vector>

#include "orlan/base/text.hpp"
#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/campaigns/GeofenceResult.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/Location.hpp"

/// Detection as it reads on paper: what the arrangements of the library are measured against.
namespace orlan::bench::literal {

struct AreaOfCampaign {
  std::vector<Coordinate> ring;
  CampaignData::Campaign campaign;
};

/// Each fix makes its polygons, and copies the campaigns that go with them.
inline std::vector<AreaOfCampaign> areasOf(const std::vector<CampaignData::Campaign>& campaigns) {
  std::vector<AreaOfCampaign> areas;
  for (const auto& campaign : campaigns) {
    std::vector<Coordinate> ring;
    for (const auto& point : campaign.location.geofence)
      ring.push_back({point.latitude(), point.longitude()});
    if (ring.size() >= 3) areas.push_back({std::move(ring), campaign});
  }
  return areas;
}

/// A cast, and for a poor fix the distance to one vertex after the other.
inline bool bufferCheck(const std::vector<Coordinate>& ring, const Location& fix) {
  if (rayCastingContains(ring, fix.coordinate)) return true;
  if (!(fix.horizontalAccuracy > 20.0)) return false;
  for (const Coordinate& vertex : ring) {
    if (distance(fix.coordinate, vertex) <= fix.horizontalAccuracy * 0.5) return true;
  }
  return false;
}

/// Three casts and seven texts.
inline GeofenceResult detect(const Location& fix, const AreaOfCampaign& area, Logger& logger) {
  const auto word = [](bool vote) { return std::string(vote ? "true" : "false"); };
  const bool rayCasting = rayCastingContains(area.ring, fix.coordinate);
  const bool buffer = bufferCheck(area.ring, fix);
  const bool historical = rayCastingContains(area.ring, fix.coordinate);
  logger.breadcrumb("🔍 Polygon detection for campaign " + std::to_string(area.campaign.campaign.campaignId) +
                    ":");
  logger.breadcrumb("  - Ray casting: " + word(rayCasting));
  logger.breadcrumb("  - Buffer check: " + word(buffer));
  logger.breadcrumb("  - Historical: " + word(historical));
  logger.breadcrumb("  - Location: " + text::fromDouble(fix.coordinate.latitude) + ", " +
                    text::fromDouble(fix.coordinate.longitude));
  logger.breadcrumb("  - Accuracy: " + text::fromDouble(fix.horizontalAccuracy) + "m");
  const double confidence = std::max(1.0 + fix.horizontalAccuracy / -100.0, 0.1);
  const std::string_view method = rayCasting ? "polygon_high_confidence" : "outside_polygon";
  logger.breadcrumb("  - Consensus: inside=" + word(rayCasting) +
                    ", confidence=" + text::fromDouble(confidence) + ", method=" + std::string(method));
  return {area.campaign.campaign.campaignId,
          area.campaign.location.locationId,
          rayCasting,
          confidence,
          method,
          fix.horizontalAccuracy};
}

inline std::vector<GeofenceResult> detectGeofences(const Location& fix,
                                                   const std::vector<CampaignData::Campaign>& campaigns,
                                                   Logger& logger) {
  std::vector<GeofenceResult> results;
  for (const AreaOfCampaign& area : areasOf(campaigns)) results.push_back(detect(fix, area, logger));
  return results;
}

}  // namespace orlan::bench::literal
