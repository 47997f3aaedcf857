#pragma once

#include "orlan/base/Fields.hpp"
#include "orlan/surveys/Survey.hpp"

/// The JSON form of the survey records. A question whose "question_type" is unknown does not decode.
namespace orlan {

template <>
struct Fields<SurveyChoice> {
  using R = SurveyChoice;
  static constexpr std::tuple list{field("id", &R::id), field("choice", &R::choice),
                                   field("position", &R::position)};
};

template <>
struct Fields<SurveyQuestion> {
  using R = SurveyQuestion;
  static constexpr std::tuple list{field("id", &R::id),
                                   field("question", &R::question),
                                   field("question_type", &R::questionType),
                                   field("has_choices", &R::hasChoices),
                                   field("position", &R::position),
                                   field("choices", &R::choices)};
};

template <>
struct Fields<ChoiceSelection> {
  using R = ChoiceSelection;
  static constexpr std::tuple list{field("choice_id", &R::choiceId)};
};

template <>
struct Fields<SurveyAnswer> {
  using R = SurveyAnswer;
  static constexpr std::tuple list{field("question_id", &R::questionId), field("type", &R::type),
                                   field("value", &R::value), field("choice", &R::choice)};
};

template <>
struct Fields<SurveyResponseRequest> {
  using R = SurveyResponseRequest;
  static constexpr std::tuple list{field("device_registered_id", &R::deviceRegisteredId),
                                   field("curated_notification_id", &R::curatedNotificationId),
                                   field("activity", &R::activity), field("location_id", &R::locationId),
                                   field("responses", &R::responses)};
};

}  // namespace orlan
