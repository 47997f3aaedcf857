#include "orlan/notifications/diagnostics.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <functional>

namespace orlan::diagnostics {
namespace {

using Lines = std::vector<std::string>;

constexpr std::array<std::string_view, 6> campaignKeys{"n_id",     "location_id", "mediaType",
                                                       "mediaUrl", "ctaLabel",    "ctaUrl"};
constexpr std::array<std::string_view, 3> pushPrefixes{"gcm.", "google.", "firebase."};
constexpr std::array<std::string_view, 4> nestedKeys{"notification_id", "media_url", "cta_label", "cta_url"};

std::string frame(std::string_view header, std::string_view title, const Lines& lines) {
  std::string block = fmt::format("{}\n┌─{}", header, title);
  for (const auto& line : lines) block.append("\n│ ").append(line);
  return block.append("\n└────────────────────────────────────────────");
}

std::string quoted(std::string_view text) {
  return fmt::format("\"{}\"", text);
}

std::string soundOf(const NotificationContent& content) {
  if (content.sound) return *content.sound;
  return content.defaultSound ? "default" : "nil";
}

Lines detailLines(const NotificationContent& content) {
  return {"Title: " + quoted(content.title),
          "Body: " + quoted(content.body),
          "Subtitle: " + quoted(content.subtitle),
          "Badge: " + (content.badge ? std::to_string(*content.badge) : "nil"),
          "Sound: " + soundOf(content),
          "Thread Identifier: " + quoted(content.threadIdentifier),
          "Category Identifier: " + quoted(content.categoryIdentifier),
          "Target Content Identifier: " + quoted(content.targetContentIdentifier),
          "Launch Image Name: " + quoted(content.launchImageName),
          fmt::format("Attachments: {} items", content.attachments)};
}

/// Texts as they are; everything else in JSON's notation.
std::string textForm(const json::Value* value) {
  if (!value) return "nil";
  const auto* text = value->string();
  return text ? *text : json::describe(*value);
}

Lines campaignLines(const json::Object& userInfo) {
  Lines lines;
  const auto add = [&](const json::Object& from, std::string_view where, std::string_view key) {
    lines.push_back(fmt::format("{}{}: {}", where, key, textForm(from.find(key))));
  };
  for (const auto key : campaignKeys) add(userInfo, "", key);
  add(userInfo, "", "campaign_id");
  const json::Value* data = userInfo.find("notification_data");
  if (const auto* nested = data ? data->object() : nullptr) {
    for (const auto key : nestedKeys) add(*nested, "notification_data.", key);
  }
  return lines;
}

bool isPushKey(std::string_view key) {
  return std::any_of(pushPrefixes.begin(), pushPrefixes.end(),
                     [&](auto prefix) { return key.starts_with(prefix); });
}

bool isCustomKey(std::string_view key) {
  return !isPushKey(key) && std::find(campaignKeys.begin(), campaignKeys.end(), key) == campaignKeys.end();
}

/// JSON's notation for every value, so that a number and its text are told apart.
Lines entryLines(const json::Object& userInfo, const std::function<bool(std::string_view)>& wanted) {
  Lines lines;
  for (const auto& [key, value] : userInfo) {
    if (wanted(key)) lines.push_back(key + ": " + json::describe(value));
  }
  return lines;
}

}  // namespace

std::vector<std::string> received(const NotificationContent& content, std::string_view context) {
  const json::Object& info = content.userInfo;
  std::vector<std::string> blocks;
  const auto add = [&](std::string_view what, std::string_view title, const Lines& lines) {
    blocks.push_back(frame(fmt::format("🔔 PUSH NOTIFICATION {} [{}]", what, context), title, lines));
  };
  const auto addEntries = [&](std::string_view what, std::string_view title, const auto& wanted) {
    if (const auto lines = entryLines(info, wanted); !lines.empty()) add(what, title, lines);
  };
  add("RECEIVED", "📱 Notification Details", detailLines(content));
  add("USERINFO", "📋 All UserInfo Contents:", entryLines(info, [](auto) { return true; }));
  add("ORLAN FIELDS", "🎯 Orlan-Specific Data:", campaignLines(info));
  addEntries("FIREBASE FIELDS", "🔥 Firebase-Specific Data:", isPushKey);
  addEntries("CUSTOM FIELDS", "🔧 Custom/Additional Data:", isCustomKey);
  return blocks;
}

std::string processed(const OrlanNotificationDetails& details) {
  const std::size_t questions = details.questions() ? details.questions()->size() : 0;
  return frame(
      "🔔 NOTIFICATION PROCESSING COMPLETE", "📊 Parsed Notification Data:",
      {fmt::format("Notification ID: {}", details.notifID()),
       fmt::format("Location ID: {}", details.locationID()),
       "Media Type: " + details.mediaType().value_or("nil"),
       "Media URL: " + details.mediaURL().value_or("nil"), "CTA Label: " + details.ctaLabel().value_or("nil"),
       "CTA URL: " + details.ctaURL().value_or("nil"), "Title: " + quoted(details.headline()),
       "Body: " + quoted(details.body()), fmt::format("Survey Questions: {}", questions)});
}

}  // namespace orlan::diagnostics
