#pragma once

#include <vector>

#include "orlan/campaigns/CampaignData.hpp"

namespace orlan {

/// Takes the campaigns' polygons whenever they are fetched. Main thread.
class PolygonSink {
 public:
  virtual ~PolygonSink() = default;
  virtual void takePolygons(const std::vector<CampaignPolygon>& polygons) = 0;
};

}  // namespace orlan
