#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "orlan/base/Enumeration.hpp"

namespace orlan {

/// How a survey question is answered. Value types (`boolean` to `rating`) are answered in
/// `SurveyAnswer::value`, choice types (`slider`, whose stops are the question's choices, and the two with
/// "Choice") in `SurveyAnswer::choice`.
enum class QuestionType { boolean, number, openEnded, rating, slider, singleChoice, multipleChoice };

template <>
struct RawValues<QuestionType> {
  static constexpr std::array table{
      std::pair{QuestionType::boolean, std::string_view("BOOLEAN")},
      std::pair{QuestionType::number, std::string_view("NUMBER")},
      std::pair{QuestionType::openEnded, std::string_view("OPEN_ENDED")},
      std::pair{QuestionType::rating, std::string_view("RATING")},
      std::pair{QuestionType::slider, std::string_view("SLIDER")},
      std::pair{QuestionType::singleChoice, std::string_view("SINGLE_CHOICE")},
      std::pair{QuestionType::multipleChoice, std::string_view("MULTIPLE_CHOICE")},
  };
};

}  // namespace orlan
