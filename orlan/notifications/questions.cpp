#include "orlan/notifications/questions.hpp"

#include <algorithm>

#include "orlan/surveys/SurveyFields.hpp"

namespace orlan::questions {
namespace {

SurveyChoice converted(const CampaignData::Choice& choice) {
  return {.id = choice.id.value_or(0),
          .choice = choice.name.value_or(""),
          .position = choice.position.value_or(0)};
}

SurveyQuestion converted(const CampaignData::Question& question) {
  SurveyQuestion made{.id = question.id,
                      .question = question.name,
                      .questionType = fromRawValue<QuestionType>(question.type),
                      .hasChoices = question.choices && !question.choices->empty(),
                      .position = question.position,
                      .choices = std::nullopt};
  if (!question.choices) return made;
  auto& choices = made.choices.emplace();
  for (const auto& choice : *question.choices) choices.push_back(converted(choice));
  return made;
}

}  // namespace

Result<List> fromText(std::string_view text) {
  return json::decodeText<List>(text);
}

const json::Array* listOfDictionaries(const json::Value& value) {
  const json::Array* list = value.array();
  const auto isDictionary = [](const json::Value& element) { return element.object() != nullptr; };
  return list && std::all_of(list->begin(), list->end(), isDictionary) ? list : nullptr;
}

Result<List> fromList(const json::Array& list) {
  return fromText(json::print(list));  // records decode from text: one set of rules for both forms
}

List fromCampaign(const std::vector<CampaignData::Question>& questions) {
  List made;
  made.reserve(questions.size());
  for (const auto& question : questions) made.push_back(converted(question));
  return made;
}

Found find(const CampaignData& data, std::int64_t notifID) {
  for (const auto& campaign : data.campaignsArray) {
    for (const auto& notification : campaign.outsideNotificationsArray) {
      if (notification.id == notifID) return {&campaign, &notification};
    }
  }
  return {};
}

}  // namespace orlan::questions
