#include "tools/orlan/backend/Devices.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "orlan/base/text.hpp"

namespace orlan::devbackend {

Identity Devices::identify(std::string_view postedDevice, std::string_view postedOrlan) {
  constexpr std::string_view prefix = "device-";
  const auto device = postedDevice.starts_with(prefix) ? std::string(postedDevice)
                                                       : fmt::format("{}{}", prefix, postedDevice);
  const std::scoped_lock lock(mutex_);
  if (const auto found = known_.find(device); found != known_.end()) return {device, found->second};
  std::string orlan;
  if (!postedOrlan.empty() && postedOrlan != "0") {
    orlan = postedOrlan;
    const auto number = text::toInteger(postedOrlan);
    if (number && *number >= next_ && *number < INT64_MAX) next_ = *number + 1;
  } else {
    orlan = fmt::format("{}", next_++);
  }
  known_.emplace(device, orlan);
  return {device, orlan};
}

}  // namespace orlan::devbackend
