#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "orlan/campaigns/CampaignData.hpp"

namespace orlan::test {

inline CampaignData::Notification notification(std::int64_t id, std::string activation,
                                               std::string headline) {
  CampaignData::Notification made;
  made.id = id;
  made.activation = std::move(activation);
  made.body = "About " + headline;
  made.headline = std::move(headline);
  return made;
}

inline CampaignData::Campaign campaign(std::int64_t id, std::int64_t location,
                                       std::vector<CampaignData::Notification> notifications = {}) {
  return {{"Campaign " + std::to_string(id), id}, {location, {}}, std::move(notifications)};
}

/// A square around `centre`, `half` degrees to each side.
inline Polygon square(Coordinate centre, double half = 0.001) {
  const auto [lat, lon] = centre;
  return Polygon({{lat - half, lon - half},
                  {lat - half, lon + half},
                  {lat + half, lon + half},
                  {lat + half, lon - half}});
}

}  // namespace orlan::test
