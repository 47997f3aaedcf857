#include "phones/simulated/SimulatedDevice.hpp"

#include <utility>

namespace orlan::sim {

SimulatedDevice::SimulatedDevice(DeviceSettings settings) : settings_(std::move(settings)) {}

json::Value SimulatedDevice::info(std::string_view key) const {
  const json::Value* value = settings_.info.find(key);
  return value ? *value : json::Value();
}

std::optional<json::Object> SimulatedDevice::propertyList(std::string_view name) const {
  const auto found = settings_.propertyLists.find(name);
  return found == settings_.propertyLists.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace orlan::sim
