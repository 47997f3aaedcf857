#include "orlan/geofence/CampaignAnswer.hpp"

#include <algorithm>
#include <cstring>
#include <utility>

#include "orlan/campaigns/CampaignPolygons.hpp"

namespace orlan {

namespace {

/// Of two bodies that differ in eight bytes only, never the same.
std::uint64_t fingerprintOf(std::string_view body) {
  std::uint64_t value = 14695981039346656037U;
  for (std::size_t at = 0; at < body.size(); at += sizeof value) {
    std::uint64_t word = 0;
    std::memcpy(&word, body.data() + at, std::min(sizeof word, body.size() - at));
    value = (value ^ word) * 0x9e3779b97f4a7c15U;
    value ^= value >> 32;
  }
  return value;
}

}  // namespace

CampaignAnswer::CampaignAnswer(std::string_view body, GeofenceConversion conversion)
    : size_(body.size()),
      fingerprint_(fingerprintOf(body)),
      report_(std::move(conversion.report)),
      data_(std::make_shared<const CampaignData>(std::move(conversion.data))),
      polygons_(std::make_shared<const TrackedPolygons>(campaignPolygons(data_))) {}

Result<std::shared_ptr<const CampaignAnswer>> CampaignAnswer::of(std::string_view body) {
  auto conversion = GeofenceConversion::of(body);
  if (!conversion) return Unexpected(conversion.error());
  return std::shared_ptr<const CampaignAnswer>(new CampaignAnswer(body, std::move(*conversion)));
}

bool CampaignAnswer::isOf(std::string_view body) const {
  return body.size() == size_ && fingerprintOf(body) == fingerprint_;
}

}  // namespace orlan
