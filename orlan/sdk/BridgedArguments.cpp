#include "orlan/sdk/BridgedArguments.hpp"

#include <cmath>
#include <utility>

#include "orlan/base/text.hpp"

namespace orlan {
namespace {

/// Null pointer, too, when `value` is no object.
const json::Value* memberOf(const json::Value& value, std::string_view key) {
  return value.object() == nullptr ? nullptr : value.object()->find(key);
}

const std::string* textAt(const json::Value& value, std::string_view key) {
  const auto* member = memberOf(value, key);
  return member == nullptr ? nullptr : member->string();
}

std::optional<std::int64_t> integerAt(const json::Value& value, std::string_view key) {
  const auto* member = memberOf(value, key);
  if (member == nullptr) return std::nullopt;
  if (const auto* real = member->real()) {
    return std::trunc(*real) == *real ? text::toInteger(text::fixed(*real, 0)) : std::nullopt;
  }
  return member->integer() == nullptr ? std::nullopt : std::optional(*member->integer());
}

std::optional<SurveyAnswer> answerFrom(const json::Value& value) {
  const auto questionId = integerAt(value, "question_id");
  const auto* type = textAt(value, "type");
  const auto* text = textAt(value, "value");
  if (!questionId || type == nullptr || text == nullptr) return std::nullopt;
  SurveyAnswer answer{*questionId, *type, *text, std::nullopt};
  const auto* choice = memberOf(value, "choice");
  if (choice == nullptr || choice->isNull()) return answer;
  if (choice->array() == nullptr) return std::nullopt;
  answer.choice.emplace();
  for (const json::Value& selected : *choice->array()) {
    const auto id = integerAt(selected, "choice_id");
    if (!id) return std::nullopt;
    answer.choice->push_back({*id});
  }
  return answer;
}

}  // namespace

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
    if (auto answer = answerFrom(element)) answers.push_back(std::move(*answer));
  }
  return answers;
}

}  // namespace orlan
