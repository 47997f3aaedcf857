#include <gtest/gtest.h>

#include "tools/orlan/run/SurveyDialog.hpp"

namespace orlan::run {
namespace {

TEST(SurveyDialog, TakesAnswersInAPersonsWords) {
  using enum QuestionType;
  const std::vector<SurveyChoice> cakes{{31, "Carrot", 2}, {30, "Lemon, with cream", 0}, {32, "Plum", 1}};
  const struct {
    QuestionType type;
    std::vector<SurveyChoice> choices;
    const char* typed;
    std::string taken;  // the value and the choices; empty: refused
  } rows[] = {
      {rating, {}, "4", "4"},
      {rating, {}, "6", ""},
      {openEnded, {}, "as ever, fine", "as ever, fine"},
      {singleChoice, cakes, "2", " 32"},  // by number, as shown
      {slider, cakes, "Carrot", " 31"},
      {singleChoice, cakes, "Lemon, with cream", " 30"},
      {multipleChoice, cakes, "1, Carrot", " 30 31"},
      {multipleChoice, cakes, "1, 4", ""},
      {multipleChoice, cakes, "", ""},
  };
  for (const auto& row : rows) {
    SurveyQuestion question{5, "Well?", row.type, !row.choices.empty(), 0, std::nullopt};
    if (!row.choices.empty()) question.choices = row.choices;
    SurveyDialog dialog({question});
    std::string taken;
    if (dialog.answer(row.typed)) {
      taken = dialog.answers()[0].value;
      const auto chosen = dialog.answers()[0].choice.value_or(std::vector<ChoiceSelection>());
      for (const auto& one : chosen) taken += " " + std::to_string(one.choiceId);
    }
    EXPECT_EQ(taken, row.taken) << row.typed;
    EXPECT_EQ(dialog.isAsking(), taken.empty()) << row.typed;
  }
}

}  // namespace
}  // namespace orlan::run
