#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "orlan/surveys/QuestionType.hpp"

/// The short surveys that a notification can carry: what is asked, what is answered, and the request that
/// brings the answers to the backend. Plain values; the JSON form of each is in `SurveyFields.hpp`.
namespace orlan {

/// One option of a question.
struct SurveyChoice {
  std::int64_t id = 0;
  std::string choice;         // the option's label
  std::int64_t position = 0;  // order of display

  friend bool operator==(const SurveyChoice&, const SurveyChoice&) = default;
};

/// One selected option.
struct ChoiceSelection {
  std::int64_t choiceId = 0;

  friend bool operator==(const ChoiceSelection&, const ChoiceSelection&) = default;
};

/// What a person answered to one question; `SurveyQuestion::toAnswer` makes it.
struct SurveyAnswer {
  std::int64_t questionId = 0;
  std::string type;   // raw value of the question's type; kept as text, since a host may fill it in itself
  std::string value;  // may be empty for choice types
  std::optional<std::vector<ChoiceSelection>> choice;

  friend bool operator==(const SurveyAnswer&, const SurveyAnswer&) = default;
};

/// One question of a notification's survey.
struct SurveyQuestion {
  std::int64_t id = 0;
  std::string question;
  std::optional<QuestionType> questionType;
  bool hasChoices = false;
  std::int64_t position = 0;  // order of display
  std::optional<std::vector<SurveyChoice>> choices;

  /// The answer to this question: `value` as it is (not trimmed), one selection for each of
  /// `selectedChoices` in their order. Nothing is checked here: see `isValid`. A question without a type
  /// gives an answer with an empty type, which is never valid. Any thread.
  [[nodiscard]] SurveyAnswer toAnswer(
      std::string value,
      const std::optional<std::vector<std::int64_t>>& selectedChoices = std::nullopt) const;

  friend bool operator==(const SurveyQuestion&, const SurveyQuestion&) = default;
};

/// What is posted for answers (`activity` "survey_activity") and for events (no `responses`). Absent members
/// are left out of its JSON.
struct SurveyResponseRequest {
  std::string deviceRegisteredId;  // the identity that registration gave this device
  std::int64_t curatedNotificationId = 0;
  std::string activity;
  std::optional<std::int64_t> locationId;
  std::optional<std::vector<SurveyAnswer>> responses;

  friend bool operator==(const SurveyResponseRequest&, const SurveyResponseRequest&) = default;
};

}  // namespace orlan
