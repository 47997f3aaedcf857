// A host reports what a person did with a survey.
#include "tools/orlan/simulate/Scene.hpp"
#include "tools/orlan/simulate/keys.hpp"
#include "tools/orlan/simulate/stepTable.hpp"

namespace orlan::simulate {
namespace {

std::vector<ChoiceSelection> readSelections(const Item& item) {
  std::vector<ChoiceSelection> selections;
  for (const Item& selection : item.elements()) {
    selections.push_back({selection.members(keys::selection)["choice_id"].integer()});
  }
  return selections;
}

/// An answer in its JSON form.
SurveyAnswer readAnswer(const Item& item) {
  const Members members = item.members(keys::answer);
  SurveyAnswer answer{members["question_id"].integer(), members["type"].string(), members["value"].string(),
                      std::nullopt};
  if (const Item choice = members["choice"]; choice.isThere() && !choice.isNull()) {
    answer.choice = readSelections(choice);
  }
  return answer;
}

std::optional<std::string> readLocationId(const Item& id) {
  if (!id.isThere() || id.isNull()) return std::nullopt;
  return id.string();
}

Action readSubmitSurveyResponse(const Members& call, const Files&) {
  std::vector<SurveyAnswer> answers;
  for (const Item& answer : call["answers"].elements()) answers.push_back(readAnswer(answer));
  return ActOfAPerson([notificationId = call["notificationId"].string(),
                       locationId = readLocationId(call["locationId"]),
                       answers = std::move(answers)](Scene& scene) {
    scene.plugin().submitSurveyResponse(notificationId, locationId, answers, scene.completion<bool>());
  });
}

Action readTrackSurveyEvent(const Members& call, const Files&) {
  return ActOfAPerson([notificationId = call["notificationId"].string(),
                       locationId = readLocationId(call["locationId"]),
                       activity = call["activity"].string()](Scene& scene) {
    scene.plugin().trackSurveyEvent(notificationId, locationId, activity, scene.completion<bool>());
  });
}

}  // namespace

std::vector<StepKind> surveyCalls() {
  return {
      {"submitSurveyResponse", {"notificationId", "locationId", "answers"}, readSubmitSurveyResponse},
      {"trackSurveyEvent", {"notificationId", "locationId", "activity"}, readTrackSurveyEvent},
  };
}

}  // namespace orlan::simulate
