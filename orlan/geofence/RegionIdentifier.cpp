#include "orlan/geofence/RegionIdentifier.hpp"

#include "orlan/base/text.hpp"

namespace orlan::regionIdentifier {

std::string of(std::int64_t campaignId, std::int64_t locationId) {
  return "camp_" + std::to_string(campaignId) + "_" + std::to_string(locationId);
}

std::optional<std::int64_t> campaignId(std::string_view identifier) {
  const auto pieces = text::split(identifier, '_');
  if (pieces.size() < 2) return std::nullopt;
  return text::toInteger(pieces[1]);
}

}  // namespace orlan::regionIdentifier
