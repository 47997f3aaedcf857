#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "orlan/base/Result.hpp"
#include "orlan/campaigns/GeofenceResponse.hpp"
#include "orlan/geofence/TrackedPolygons.hpp"

namespace orlan {

/// A good answer of the backend with all that is made of it, which takes long: on no thread that has to go
/// on. Immutable.
class CampaignAnswer {
 public:
  [[nodiscard]] static Result<std::shared_ptr<const CampaignAnswer>> of(std::string_view body);

  /// Whether this is the body that it was made of. By its size and 64 bits of it: the body itself would take
  /// more memory than all the rest.
  [[nodiscard]] bool isOf(std::string_view body) const;

  [[nodiscard]] const std::shared_ptr<const CampaignData>& data() const { return data_; }
  [[nodiscard]] const std::shared_ptr<const TrackedPolygons>& polygons() const { return polygons_; }
  [[nodiscard]] const GeofenceConversion::Report& report() const { return report_; }

 private:
  CampaignAnswer(std::string_view body, GeofenceConversion conversion);

  std::size_t size_;
  std::uint64_t fingerprint_;
  GeofenceConversion::Report report_;
  std::shared_ptr<const CampaignData> data_;
  std::shared_ptr<const TrackedPolygons> polygons_;
};

}  // namespace orlan
