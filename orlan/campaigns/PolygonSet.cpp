#include "orlan/campaigns/PolygonSet.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

#include "orlan/platform/VertexDistance.hpp"

namespace orlan {

PolygonSet::PolygonSet(std::vector<CampaignPolygon> polygons) : polygons_(std::move(polygons)) {
  for (const auto& [polygon, campaign] : polygons_) {
    boxes_.push_back(polygon.box());
    vertexBoxes_.push_back(polygon.vertexBox());
    const std::int64_t campaignId = campaign->campaign.campaignId;
    titles_ += "🔍 Polygon detection for campaign " + std::to_string(campaignId) + ":";
    identities_.push_back({campaignId, campaign->location.locationId, titles_.size()});
  }
  grid_ = PolygonGrid(boxes_);
}

std::vector<PolygonSet::Index> PolygonSet::containing(Coordinate point) const {
  std::vector<Index> found;
  const auto look = [&](std::span<const Index> candidates) {
    for (const Index i : candidates) {
      const auto& box = boxes_[i];  // beside each other, while a polygon is somewhere in memory
      if (!(box.longitude.min <= point.longitude) || !(point.longitude < box.longitude.max) ||
          !(box.minLatitude <= point.latitude) || !(point.latitude < box.maxLatitude)) {
        continue;
      }
      if (polygons_[i].polygon.rayCastingContains(point)) found.push_back(i);
    }
  };
  const auto candidates = grid_.at(point);
  look(candidates.here);
  const auto middle = static_cast<std::ptrdiff_t>(found.size());
  look(candidates.everywhere);
  std::inplace_merge(found.begin(), found.begin() + middle, found.end());
  return found;
}

std::vector<PolygonSet::Index> PolygonSet::withVertexWithin(Coordinate point, double metres) const {
  std::vector<Index> found;
  const Vicinity vicinity(point, metres);
  for (Index i = 0; i < vertexBoxes_.size(); ++i) {
    if (vicinity.mayReach(vertexBoxes_[i]) && polygons_[i].polygon.hasVertexIn(vicinity)) found.push_back(i);
  }
  return found;
}

PolygonSet::Label PolygonSet::label(std::size_t index) const {
  const Identity& identity = identities_[index];
  const std::size_t begin = index > 0 ? identities_[index - 1].titleEnd : 0;
  return {identity.campaignId, identity.locationId,
          std::string_view(titles_).substr(begin, identity.titleEnd - begin)};
}

}  // namespace orlan
