#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/campaigns/PolygonGrid.hpp"

namespace orlan {

/// The polygons that a monitor watches, arranged once so that each fix is answered for all of them at about
/// the price of the few around it. Immutable; safe to read from any thread. The answers are those of asking
/// each polygon.
class PolygonSet {
 public:
  using Index = std::uint32_t;

  PolygonSet() = default;
  explicit PolygonSet(std::vector<CampaignPolygon> polygons);

  [[nodiscard]] std::span<const CampaignPolygon> polygons() const { return polygons_; }
  [[nodiscard]] std::size_t size() const { return polygons_.size(); }

  /// The polygons whose ray-casting test says "inside", ascending.
  [[nodiscard]] std::vector<Index> containing(Coordinate point) const;

  /// The polygons that have a vertex at most `metres` from the point, ascending.
  [[nodiscard]] std::vector<Index> withVertexWithin(Coordinate point, double metres) const;

  /// What a detection says about each polygon whatever the fix: campaign, location, and the line that opens
  /// its block in the log.
  struct Label {
    std::int64_t campaignId;
    std::int64_t locationId;
    std::string_view detectionTitle;
  };
  [[nodiscard]] Label label(std::size_t index) const;

 private:
  struct Identity {
    std::int64_t campaignId;
    std::int64_t locationId;
    std::size_t titleEnd;
  };

  std::vector<CampaignPolygon> polygons_;
  std::vector<Polygon::Box> boxes_;
  std::vector<Polygon::Box> vertexBoxes_;
  PolygonGrid grid_;
  std::vector<Identity> identities_;
  std::string titles_;  // one after the other
};

}  // namespace orlan
