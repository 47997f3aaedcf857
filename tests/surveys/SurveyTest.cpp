#include <gmock/gmock.h>

#include "orlan/logging/Logger.hpp"
#include "orlan/surveys/AnswerValidation.hpp"
#include "orlan/surveys/SurveyFields.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan {
namespace {

using ::testing::HasSubstr;
using Choices = std::optional<std::vector<ChoiceSelection>>;

TEST(AnswerValidation, EachTypeHasItsRule) {
  struct Console final : phone::PhoneObserver {
    void consoleLines(const ConsoleLines& lines) override {
      text += std::string(lines.level) + " " + std::string(lines.text.substr(lines.messageAt));
    }
    std::string text;
  } console;
  sim::World world;
  sim::SimulatedPhone phone(world);
  phone.observe(console);
  const Platform platform = phone.platform();
  Logger logger(platform.clock, platform.console, platform.files, platform.queues);
  struct Row {
    std::string type;
    std::string value;
    Choices choice;
    bool valid;
  };
  const std::vector<ChoiceSelection> two{{11}, {12}};
  for (const auto& [type, value, choice, valid] : {
           Row{"BOOLEAN", "TRUE", {}, true},
           Row{"BOOLEAN", "Yes", {}, true},
           Row{"BOOLEAN", "no", {}, true},
           Row{"BOOLEAN", "fAlSe", {}, true},
           Row{"BOOLEAN", "1", two, false},
           Row{"BOOLEAN", " yes", {}, false},
           Row{"NUMBER", "-0", {}, true},
           Row{"NUMBER", "9223372036854775807", {}, true},
           Row{"NUMBER", "9223372036854775808", {}, false},
           Row{"NUMBER", "1.0", {}, false},
           Row{"OPEN_ENDED", " x\n", {}, true},
           Row{"OPEN_ENDED", " \n", two, false},
           Row{"RATING", "1", {}, true},
           Row{"RATING", "+5", {}, true},
           Row{"RATING", "0", {}, false},
           Row{"RATING", "6", {}, false},
           Row{"RATING", "4.5", {}, false},
           Row{"SLIDER", "3", {}, false},
           Row{"SLIDER", "", two, true},
           Row{"SINGLE_CHOICE", "", two, true},
           Row{"SINGLE_CHOICE", "x", Choices(std::in_place), false},
           Row{"MULTIPLE_CHOICE", "", two, true},
           Row{"MULTIPLE_CHOICE", "", {}, false},
           Row{"", "yes", two, false},
           Row{"rating", "5", two, false},
       }) {
    EXPECT_EQ(isValid({1, type, value, choice}), valid) << type << " '" << value << "'";
    EXPECT_EQ(isInvalid({1, type, value, choice}, logger), !valid) << type << " '" << value << "'";
  }
  EXPECT_EQ(console.text,
            "ERROR submitSurveyResponse: Unknown question type ''\n"
            "ERROR submitSurveyResponse: Unknown question type 'rating'\n");
}

TEST(SurveyQuestion, AnswersCarryWhatTheyAreGiven) {
  const SurveyQuestion typed{7, "Why?", QuestionType::singleChoice, true, 0, {}};
  EXPECT_EQ(json::encodeText(typed.toAnswer(" as it is ")).value_or(""),
            R"({"question_id":7,"type":"SINGLE_CHOICE","value":" as it is "})");
  EXPECT_EQ(json::encodeText(typed.toAnswer("", std::vector<std::int64_t>{})).value_or(""),
            R"({"question_id":7,"type":"SINGLE_CHOICE","value":"","choice":[]})");
  EXPECT_EQ(
      json::encodeText(typed.toAnswer("", std::vector<std::int64_t>{12, 11})).value_or(""),
      R"({"question_id":7,"type":"SINGLE_CHOICE","value":"","choice":[{"choice_id":12},{"choice_id":11}]})");
  EXPECT_EQ(SurveyQuestion{}.toAnswer("x").type, "");
}

TEST(SurveyFields, QuestionsAreReadAndWrittenAlike) {
  const std::string full =
      R"([{"id":1,"question":"Which?","question_type":"SLIDER","has_choices":true,"position":2,)"
      R"("choices":[{"id":11,"choice":"Low","position":0}]}])";
  const auto read = json::decodeText<std::vector<SurveyQuestion>>(full);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->at(0), (SurveyQuestion{1, "Which?", QuestionType::slider, true, 2, {{{11, "Low", 0}}}}));
  EXPECT_EQ(json::encodeText(*read).value_or(""), full);

  const std::string bare = R"({"id":1,"question":"Which?","has_choices":false,"position":2})";
  const auto untyped = json::decodeText<SurveyQuestion>(bare);
  ASSERT_TRUE(untyped);
  EXPECT_EQ(json::encodeText(*untyped).value_or(""), bare);

  const auto unknown = json::decodeText<SurveyQuestion>(
      R"({"id":1,"question":"","question_type":"slider","has_choices":true,"position":2})");
  ASSERT_FALSE(unknown);
  EXPECT_THAT(unknown.error().description, HasSubstr("question_type: expected a known value"));
}

TEST(SurveyFields, ARequestLeavesOutWhatIsAbsent) {
  const SurveyResponseRequest event{"D1", 42, "shown", {}, {}};
  EXPECT_EQ(json::encodeText(event).value_or(""),
            R"({"device_registered_id":"D1","curated_notification_id":42,"activity":"shown"})");
}

}  // namespace
}  // namespace orlan
