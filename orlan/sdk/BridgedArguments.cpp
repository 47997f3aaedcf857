#include "orlan/sdk/BridgedArguments.hpp"

namespace orlan {

std::vector<std::string> stringsFromBridged(const json::Value& value) {
  std::vector<std::string> strings;
  const json::Array* array = value.array();
  if (array == nullptr) return strings;
  strings.reserve(array->size());
  for (const json::Value& element : *array) {
    const std::string* string = element.string();
    if (string == nullptr) return {};
    strings.push_back(*string);
  }
  return strings;
}

}  // namespace orlan
