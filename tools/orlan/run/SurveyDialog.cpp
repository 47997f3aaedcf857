#include "tools/orlan/run/SurveyDialog.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "orlan/base/text.hpp"
#include "orlan/surveys/AnswerValidation.hpp"

namespace orlan::run {

namespace {

bool hasChoices(const SurveyQuestion& question) {
  return question.choices && !question.choices->empty();
}

/// How to answer, in a person's words.
std::string_view manner(const SurveyQuestion& question) {
  if (!question.questionType) return "any text; it has no type, so no answer to it is valid";
  switch (*question.questionType) {
    case QuestionType::boolean:
      return "yes or no";
    case QuestionType::number:
      return "a whole number";
    case QuestionType::openEnded:
      return "in your own words";
    case QuestionType::rating:
      return "1 to 5";
    case QuestionType::slider:
    case QuestionType::singleChoice:
      return "one of them";
    case QuestionType::multipleChoice:
      return "one or several, separated by commas";
  }
  return "";
}

/// The choice of this number (1 is the first) or label.
std::optional<std::int64_t> choiceId(const std::vector<SurveyChoice>& choices, std::string_view text) {
  for (const SurveyChoice& choice : choices) {
    if (choice.choice == text) return choice.id;
  }
  const auto number = text::toInteger(text);
  if (!number || *number < 1 || *number > static_cast<std::int64_t>(choices.size())) return std::nullopt;
  return choices[static_cast<std::size_t>(*number - 1)].id;
}

/// Nothing when one of the words names no choice.
std::optional<std::vector<std::int64_t>> selected(const SurveyQuestion& question, std::string_view text) {
  if (const auto whole = choiceId(*question.choices, text::trimmed(text))) return std::vector{*whole};
  std::vector<std::int64_t> ids;
  for (const std::string& word : text::split(text, ',')) {
    const auto id = choiceId(*question.choices, text::trimmed(word));
    if (!id) return std::nullopt;
    ids.push_back(*id);
  }
  return ids;
}

void sortByPosition(std::vector<SurveyQuestion>& questions) {
  std::ranges::stable_sort(questions, {}, &SurveyQuestion::position);
  for (SurveyQuestion& question : questions) {
    if (question.choices) std::ranges::stable_sort(*question.choices, {}, &SurveyChoice::position);
  }
}

}  // namespace

SurveyDialog::SurveyDialog(std::vector<SurveyQuestion> questions) : questions_(std::move(questions)) {
  sortByPosition(questions_);
}

std::string SurveyDialog::prompt() const {
  if (!isAsking()) return {};
  const SurveyQuestion& question = questions_[answers_.size()];
  std::string out = fmt::format("{}/{} {}", answers_.size() + 1, questions_.size(), question.question);
  if (hasChoices(question)) {
    int number = 0;
    for (const SurveyChoice& choice : *question.choices) {
      out += fmt::format("{} {} {}", number == 0 ? "" : ",", number + 1, choice.choice);
      ++number;
    }
  }
  return out + fmt::format(" ({})", manner(question));
}

Result<void> SurveyDialog::answer(std::string_view text) {
  const auto refused = [](std::string why) { return Unexpected(Error{"orlan run", -1, std::move(why)}); };
  if (!isAsking()) return refused("no question is open");
  const SurveyQuestion& question = questions_[answers_.size()];
  SurveyAnswer given = question.toAnswer(std::string(text));
  if (hasChoices(question)) {
    const auto ids = selected(question, text);
    if (ids) given = question.toAnswer("", ids);
  }
  if (!isValid(given)) return refused(fmt::format("that is no answer: {}", manner(question)));
  answers_.push_back(std::move(given));
  return {};
}

}  // namespace orlan::run
