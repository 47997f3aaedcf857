#include "orlan/notifications/QuestionLookup.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "orlan/surveys/SurveyFields.hpp"

namespace orlan {
namespace {

using List = std::vector<SurveyQuestion>;

/// A type that is unknown becomes none.
SurveyQuestion converted(const CampaignData::Question& question) {
  SurveyQuestion made{.id = question.id,
                      .question = question.name,
                      .questionType = fromRawValue<QuestionType>(question.type),
                      .hasChoices = question.choices && !question.choices->empty(),
                      .position = question.position,
                      .choices = std::nullopt};
  if (!question.choices) return made;
  auto& choices = made.choices.emplace();
  for (const auto& choice : *question.choices) {
    choices.push_back({choice.id.value_or(0), choice.name.value_or(""), choice.position.value_or(0)});
  }
  return made;
}

}  // namespace

QuestionLookup::Questions QuestionLookup::find(const json::Object& userInfo, std::int64_t notifID) {
  if (auto carried = inPayload(userInfo)) return carried;
  return inCampaigns(notifID);
}

QuestionLookup::Questions QuestionLookup::inPayload(const json::Object& userInfo) {
  const json::Value* value = userInfo.find("questions");
  if (!value) return std::nullopt;
  if (const auto* text = value->string()) return inText(*text);
  const json::Array* list = value->array();
  const auto isDictionary = [](const json::Value& element) { return element.object() != nullptr; };
  if (list && std::all_of(list->begin(), list->end(), isDictionary)) return inList(*list);
  return std::nullopt;
}

QuestionLookup::Questions QuestionLookup::inText(std::string_view text) {
  logger_.breadcrumb("🔍 Found questions JSON string in payload");
  auto parsed = json::decodeText<List>(text);
  if (!parsed) {
    logger_.error("❌ Failed to parse questions JSON: " + parsed.error().description);
    return std::nullopt;
  }
  logger_.breadcrumb(fmt::format("✅ Successfully parsed {} question(s) from payload", parsed->size()));
  return std::move(*parsed);
}

QuestionLookup::Questions QuestionLookup::inList(const json::Array& list) {
  logger_.breadcrumb("🔍 Found questions array in payload");
  auto parsed = json::decodeText<List>(json::print(list));  // one set of rules for both forms
  if (!parsed) return std::nullopt;
  logger_.breadcrumb(fmt::format("✅ Successfully parsed {} question(s) from array", parsed->size()));
  return std::move(*parsed);
}

QuestionLookup::Questions QuestionLookup::inCampaigns(std::int64_t notifID) {
  logger_.breadcrumb("🔍 Questions not in payload, looking up in cached campaigns...");
  const auto data = campaigns_.current();
  if (!data) {
    logger_.breadcrumb("⚠️ No cached campaign data available");
    return std::nullopt;
  }
  logger_.breadcrumb(
      fmt::format("🔍 Looking up questions for notification ID {} in cached campaigns", notifID));
  for (const auto& campaign : data->campaignsArray) {
    for (const auto& notification : campaign.outsideNotificationsArray) {
      if (notification.id == notifID) return of(campaign, notification);
    }
  }
  logger_.breadcrumb(fmt::format("⚠️ Notification ID {} not found in cached campaigns", notifID));
  return std::nullopt;
}

QuestionLookup::Questions QuestionLookup::of(const CampaignData::Campaign& campaign,
                                             const CampaignData::Notification& notification) {
  logger_.breadcrumb(
      fmt::format("✅ Found notification {} in campaign {}", notification.id, campaign.campaign.campaignId));
  if (!notification.questions || notification.questions->empty()) {
    logger_.breadcrumb(fmt::format("ℹ️ Notification {} has no questions", notification.id));
    return std::nullopt;
  }
  List found;
  for (const auto& question : *notification.questions) found.push_back(converted(question));
  logger_.breadcrumb(
      fmt::format("✅ Found {} question(s) for notification {}", found.size(), notification.id));
  return found;
}

}  // namespace orlan
