#include "orlan/sdk/BridgedArguments.hpp"

#include <utility>

#include "orlan/surveys/SurveyFields.hpp"

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

std::vector<SurveyAnswer> answersFromBridged(const json::Value& value) {
  std::vector<SurveyAnswer> answers;
  const json::Array* array = value.array();
  if (array == nullptr) return answers;
  for (const json::Value& element : *array) {
    auto answer = json::decodeText<SurveyAnswer>(json::print(element));
    if (answer) answers.push_back(std::move(*answer));
  }
  return answers;
}

}  // namespace orlan
