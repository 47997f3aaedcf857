#include "orlan/surveys/AnswerValidation.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include "orlan/base/text.hpp"
#include "orlan/logging/Logger.hpp"

namespace orlan {
namespace {

bool isBoolean(std::string_view value) {
  constexpr std::array<std::string_view, 4> words{"true", "false", "yes", "no"};
  return std::find(words.begin(), words.end(), text::lower(value)) != words.end();
}

bool isRating(std::string_view value) {
  const auto number = text::toInteger(value);
  return number && *number >= 1 && *number <= 5;
}

bool isValid(QuestionType type, const SurveyAnswer& answer) {
  switch (type) {
    case QuestionType::boolean:
      return isBoolean(answer.value);
    case QuestionType::number:
      return text::toInteger(answer.value).has_value();
    case QuestionType::openEnded:
      return !text::trimmed(answer.value).empty();
    case QuestionType::rating:
      return isRating(answer.value);
    case QuestionType::slider:
    case QuestionType::singleChoice:
    case QuestionType::multipleChoice:
      return answer.choice && !answer.choice->empty();
  }
  return false;
}

}  // namespace

bool isValid(const SurveyAnswer& answer) {
  const auto type = fromRawValue<QuestionType>(answer.type);
  return type && isValid(*type, answer);
}

bool isInvalid(const SurveyAnswer& answer, Logger& logger) {
  if (!fromRawValue<QuestionType>(answer.type)) {
    logger.error("submitSurveyResponse: Unknown question type '" + answer.type + "'");
  }
  return !isValid(answer);
}

}  // namespace orlan
