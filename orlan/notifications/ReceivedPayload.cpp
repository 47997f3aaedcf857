#include "orlan/notifications/ReceivedPayload.hpp"

#include <cmath>
#include <initializer_list>
#include <string_view>

#include "orlan/base/text.hpp"

namespace orlan {
namespace {

constexpr std::int64_t none = -1;

using Keys = std::initializer_list<std::string_view>;

std::optional<std::int64_t> wholeNumber(const json::Value& value) {
  if (const auto* integer = value.integer()) return *integer;
  const auto* real = value.real();
  if (real && *real >= -0x1p63 && *real < 0x1p63 && *real == std::trunc(*real)) {
    return static_cast<std::int64_t>(*real);
  }
  return std::nullopt;
}

/// Nothing: the value is of no use, the search goes on.
std::optional<std::int64_t> identifierIn(const json::Value& value) {
  if (const auto* text = value.string()) return text::toInteger(*text).value_or(none);
  return wholeNumber(value);
}

std::int64_t firstIdentifier(const json::Object& info, Keys keys) {
  for (const auto key : keys) {
    const json::Value* value = info.find(key);
    if (const auto found = value ? identifierIn(*value) : std::nullopt) return *found;
  }
  return none;
}

std::optional<std::string> firstText(const json::Object& info, Keys keys) {
  for (const auto key : keys) {
    const json::Value* value = info.find(key);
    if (const auto* text = value ? value->string() : nullptr) return *text;
  }
  return std::nullopt;
}

ReceivedPayload::Nested parseNested(const json::Object& data) {
  return {.notifID = firstIdentifier(data, {"notification_id"}),
          .mediaType = firstText(data, {"type"}),
          .mediaURL = firstText(data, {"media_url"}),
          .ctaLabel = firstText(data, {"cta_label"}),
          .ctaURL = firstText(data, {"cta_url"})};
}

}  // namespace

ReceivedPayload ReceivedPayload::parse(const json::Object& userInfo) {
  ReceivedPayload payload;
  const json::Value* data = userInfo.find("notification_data");
  if (const auto* members = data ? data->object() : nullptr) payload.nested = parseNested(*members);

  const Nested first = payload.nested.value_or(Nested{});
  const auto orElse = [&](const std::optional<std::string>& text, std::string_view key) {
    return text ? text : firstText(userInfo, {key});
  };
  payload.notifID = first.notifID != none ? first.notifID : firstIdentifier(userInfo, {"id", "n_id"});
  payload.locationID = firstIdentifier(userInfo, {"locationId", "location_id"});
  payload.mediaType = orElse(first.mediaType, "mediaType");
  payload.mediaURL = orElse(first.mediaURL, "mediaUrl");
  payload.ctaLabel = orElse(first.ctaLabel, "ctaLabel");
  payload.ctaURL = orElse(first.ctaURL, "ctaUrl");
  payload.completionMessage =
      firstText(userInfo, {"postMessage", "post_message", "completion_message", "completionMessage"});
  return payload;
}

}  // namespace orlan
