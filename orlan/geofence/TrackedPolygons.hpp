#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "orlan/campaigns/PolygonSet.hpp"

namespace orlan {

/// What the monitors watch, not as a list of rings and campaigns but arranged for asking once a fix.
/// Immutable.
class TrackedPolygons {
 public:
  TrackedPolygons() = default;
  explicit TrackedPolygons(std::vector<CampaignPolygon> polygons) : set_(std::move(polygons)) {
    for (std::size_t i = 0; i < set_.size(); ++i) first_.try_emplace(set_.label(i).campaignId, i);
  }

  [[nodiscard]] const PolygonSet& set() const { return set_; }

  /// The campaign of the first entry with that id, or null.
  [[nodiscard]] const SharedCampaign* find(std::int64_t campaignId) const {
    const auto found = first_.find(campaignId);
    return found == first_.end() ? nullptr : &set_.polygons()[found->second].campaign;
  }

 private:
  PolygonSet set_;
  std::unordered_map<std::int64_t, std::size_t> first_;
};

}  // namespace orlan
