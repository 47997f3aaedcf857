#include "phones/simulated/SimulatedDevice.hpp"

#include <utility>

#include "orlan/base/text.hpp"

namespace orlan::sim {

SimulatedDevice::SimulatedDevice(DeviceSettings settings) : settings_(std::move(settings)) {}

std::optional<std::string> SimulatedDevice::vendorIdentifier() const {
  if (!settings_.vendorIdentifier) return std::nullopt;
  return text::upper(*settings_.vendorIdentifier);
}

json::Value SimulatedDevice::info(std::string_view key) const {
  const json::Value* value = settings_.info.find(key);
  return value ? *value : json::Value();
}

std::optional<json::Object> SimulatedDevice::propertyList(std::string_view name) const {
  const auto found = settings_.propertyLists.find(name);
  return found == settings_.propertyLists.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace orlan::sim
