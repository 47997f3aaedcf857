#include "orlan/surveys/Survey.hpp"

#include <utility>

namespace orlan {

SurveyAnswer SurveyQuestion::toAnswer(std::string value,
                                      const std::optional<std::vector<std::int64_t>>& selectedChoices) const {
  SurveyAnswer answer{id, std::string(questionType ? rawValue(*questionType) : std::string_view()),
                      std::move(value), std::nullopt};
  if (!selectedChoices) return answer;
  auto& selections = answer.choice.emplace();
  selections.reserve(selectedChoices->size());
  for (const std::int64_t choiceId : *selectedChoices) selections.push_back({choiceId});
  return answer;
}

}  // namespace orlan
