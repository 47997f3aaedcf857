#include "orlan/platform/KeyValueStore.hpp"

namespace orlan {

std::optional<std::string> KeyValueStore::string(std::string_view key) const {
  const auto value = get(key);
  if (!value || !value->string()) return std::nullopt;
  return *value->string();
}

std::optional<std::string> KeyValueStore::bytes(std::string_view key) const {
  const auto value = get(key);
  if (!value || !value->bytes()) return std::nullopt;
  return value->bytes()->data;
}

std::optional<double> KeyValueStore::number(std::string_view key) const {
  const auto value = get(key);
  return value ? value->number() : std::nullopt;
}

bool KeyValueStore::boolean(std::string_view key) const {
  const auto value = get(key);
  return value && value->boolean() && *value->boolean();
}

}  // namespace orlan
