#include "phones/simulated/SimulatedStore.hpp"

#include <utility>

#include "phones/common/storageRules.hpp"

namespace orlan::sim {

SimulatedStore::SimulatedStore(phone::PhoneObserver& observer, const json::Object& initial)
    : observer_(observer) {
  for (const auto& [key, value] : initial) change(key, value);
}

std::optional<json::Value> SimulatedStore::get(std::string_view key) const {
  const std::lock_guard lock(mutex_);
  const auto found = values_.find(key);
  return found == values_.end() ? std::nullopt : std::optional(found->second);
}

void SimulatedStore::set(std::string_view key, json::Value value) {
  if (!phone::isStorable(value)) return;
  change(key, value);
  observer_.storeWritten(key, value);
}

void SimulatedStore::remove(std::string_view key) {
  {
    const std::lock_guard lock(mutex_);
    const auto found = values_.find(key);
    if (found == values_.end()) return;
    values_.erase(found);
  }
  observer_.storeRemoved(key);
}

json::Object SimulatedStore::contents() const {
  const std::lock_guard lock(mutex_);
  json::Object all;
  for (const auto& [key, value] : values_) all.set(key, value);
  return all;
}

void SimulatedStore::change(std::string_view key, json::Value value) {
  const std::lock_guard lock(mutex_);
  if (phone::isStorable(value)) {
    values_.insert_or_assign(std::string(key), std::move(value));
  } else if (const auto found = values_.find(key); value.isNull() && found != values_.end()) {
    values_.erase(found);
  }
}

}  // namespace orlan::sim
