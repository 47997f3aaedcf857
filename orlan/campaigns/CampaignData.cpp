#include "orlan/campaigns/CampaignData.hpp"

#include <functional>

#include "orlan/base/text.hpp"
#include "orlan/campaigns/CampaignFields.hpp"

namespace orlan {

bool DegreesText::decode(json::Node node, double& degrees, json::Failure& failure) {
  const auto text = node.string();
  if (!text) return failure.expected("a string", node);
  degrees = text::toDouble(*text).value_or(0.0);
  return true;
}

}  // namespace orlan

std::size_t std::hash<orlan::GeofencePoint>::operator()(const orlan::GeofencePoint& point) const noexcept {
  std::size_t seed = 0;
  const auto feed = [&seed](std::size_t value) {
    seed ^= value + 0x9e3779b97f4a7c15U + (seed << 6) + (seed >> 2);
  };
  feed(std::hash<std::int64_t>{}(point.position()));
  feed(std::hash<double>{}(point.latitude()));  // the standard's hash treats both zeros alike
  feed(std::hash<double>{}(point.longitude()));
  return seed;
}
