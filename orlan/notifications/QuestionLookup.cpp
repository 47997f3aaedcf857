#include "orlan/notifications/QuestionLookup.hpp"

#include <fmt/format.h>

namespace orlan {

std::optional<questions::List> QuestionLookup::find(const json::Object& userInfo, std::int64_t notifID) {
  if (auto carried = inPayload(userInfo)) return carried;
  return inCampaigns(notifID);
}

std::optional<questions::List> QuestionLookup::inPayload(const json::Object& userInfo) {
  const json::Value* value = userInfo.find("questions");
  if (!value) return std::nullopt;
  if (const auto* text = value->string()) return inText(*text);
  if (const auto* list = questions::listOfDictionaries(*value)) return inList(*list);
  return std::nullopt;
}

std::optional<questions::List> QuestionLookup::inText(std::string_view text) {
  logger_.breadcrumb("🔍 Found questions JSON string in payload");
  auto parsed = questions::fromText(text);
  if (!parsed) {
    logger_.error("❌ Failed to parse questions JSON: " + parsed.error().description);
    return std::nullopt;
  }
  logger_.breadcrumb(fmt::format("✅ Successfully parsed {} question(s) from payload", parsed->size()));
  return std::move(*parsed);
}

std::optional<questions::List> QuestionLookup::inList(const json::Array& list) {
  logger_.breadcrumb("🔍 Found questions array in payload");
  auto parsed = questions::fromList(list);
  if (!parsed) return std::nullopt;
  logger_.breadcrumb(fmt::format("✅ Successfully parsed {} question(s) from array", parsed->size()));
  return std::move(*parsed);
}

std::optional<questions::List> QuestionLookup::inCampaigns(std::int64_t notifID) {
  logger_.breadcrumb("🔍 Questions not in payload, looking up in cached campaigns...");
  const auto data = campaigns_.current();
  if (!data) {
    logger_.breadcrumb("⚠️ No cached campaign data available");
    return std::nullopt;
  }
  logger_.breadcrumb(
      fmt::format("🔍 Looking up questions for notification ID {} in cached campaigns", notifID));
  const auto [campaign, notification] = questions::find(*data, notifID);
  if (!notification) {
    logger_.breadcrumb(fmt::format("⚠️ Notification ID {} not found in cached campaigns", notifID));
    return std::nullopt;
  }
  logger_.breadcrumb(
      fmt::format("✅ Found notification {} in campaign {}", notifID, campaign->campaign.campaignId));
  if (!notification->questions || notification->questions->empty()) {
    logger_.breadcrumb(fmt::format("ℹ️ Notification {} has no questions", notifID));
    return std::nullopt;
  }
  auto found = questions::fromCampaign(*notification->questions);
  logger_.breadcrumb(fmt::format("✅ Found {} question(s) for notification {}", found.size(), notifID));
  return found;
}

}  // namespace orlan
