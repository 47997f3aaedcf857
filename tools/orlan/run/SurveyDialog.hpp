#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/base/Result.hpp"
#include "orlan/surveys/Survey.hpp"

namespace orlan::run {

/// Asks the questions of a survey one after the other, in the order of their positions. A value: knows no
/// terminal.
class SurveyDialog {
 public:
  SurveyDialog() = default;
  explicit SurveyDialog(std::vector<SurveyQuestion> questions);

  [[nodiscard]] bool isAsking() const { return answers_.size() < questions_.size(); }

  /// "2/3 Which cake? 1 Lemon, 2 Carrot (a number)": the question that is asked now and how to answer it.
  [[nodiscard]] std::string prompt() const;

  /// Answers the question that is asked; choices by their numbers or labels, several separated by commas. An
  /// answer that would not be valid is an error in a person's words, and the question stays.
  [[nodiscard]] Result<void> answer(std::string_view text);

  /// So far, in the order asked.
  [[nodiscard]] const std::vector<SurveyAnswer>& answers() const { return answers_; }

 private:
  std::vector<SurveyQuestion> questions_;
  std::vector<SurveyAnswer> answers_;
};

}  // namespace orlan::run
