#include <gtest/gtest.h>

#include "tools/orlan/run/SurveyDialog.hpp"

namespace orlan::run {
namespace {

using Choices = std::vector<std::int64_t>;

TEST(SurveyDialog, TakesAnswersInAPersonsWords) {
  const std::vector<SurveyChoice> cakes{{31, "Carrot", 2}, {30, "Lemon, with cream", 0}, {32, "Plum", 1}};
  const struct {
    const char* name;
    QuestionType type;
    std::vector<SurveyChoice> choices;
    const char* typed;
    bool taken;
    std::string value;
    Choices chosen;
  } rows[] = {
      {"rating", QuestionType::rating, {}, "4", true, "4", {}},
      {"rating too high", QuestionType::rating, {}, "6", false, "", {}},
      {"boolean", QuestionType::boolean, {}, "YES", true, "YES", {}},
      {"number", QuestionType::number, {}, "four", false, "", {}},
      {"open", QuestionType::openEnded, {}, "as ever, fine", true, "as ever, fine", {}},
      {"open but blank", QuestionType::openEnded, {}, "  ", false, "", {}},
      {"choice by number, as shown", QuestionType::singleChoice, cakes, "2", true, "", {32}},
      {"choice by label", QuestionType::slider, cakes, "Carrot", true, "", {31}},
      {"label with a comma", QuestionType::singleChoice, cakes, "Lemon, with cream", true, "", {30}},
      {"several", QuestionType::multipleChoice, cakes, "1, Carrot", true, "", {30, 31}},
      {"no such choice", QuestionType::multipleChoice, cakes, "1, 4", false, "", {}},
      {"nothing chosen", QuestionType::multipleChoice, cakes, "", false, "", {}},
  };
  for (const auto& row : rows) {
    SurveyQuestion question{5, "Well?", row.type, !row.choices.empty(), 0, std::nullopt};
    if (!row.choices.empty()) question.choices = row.choices;
    SurveyDialog dialog({question});
    EXPECT_EQ(dialog.answer(row.typed).has_value(), row.taken) << row.name;
    EXPECT_EQ(dialog.isAsking(), !row.taken) << row.name;
    if (!row.taken) continue;
    ASSERT_EQ(dialog.answers().size(), 1U) << row.name;
    EXPECT_EQ(dialog.answers()[0].value, row.value) << row.name;
    Choices chosen;
    for (const auto& one : dialog.answers()[0].choice.value_or(std::vector<ChoiceSelection>())) {
      chosen.push_back(one.choiceId);
    }
    EXPECT_EQ(chosen, row.chosen) << row.name;
  }
}

TEST(SurveyDialog, AsksInTheOrderOfPositionsAndShowsTextUnobeyed) {
  SurveyDialog dialog({{2, "Second?", QuestionType::boolean, false, 9, std::nullopt},
                       {1, "\x1b[31mFirst?", QuestionType::rating, false, 3, std::nullopt}});
  EXPECT_EQ(dialog.prompt(), "1/2 \\u001b[31mFirst? (1 to 5)");
  EXPECT_TRUE(dialog.answer("5"));
  EXPECT_EQ(dialog.prompt(), "2/2 Second? (yes or no)");
  EXPECT_TRUE(dialog.answer("no"));
  EXPECT_FALSE(dialog.isAsking());
  EXPECT_FALSE(dialog.answer("more"));
  EXPECT_FALSE(SurveyDialog().isAsking());
}

}  // namespace
}  // namespace orlan::run
