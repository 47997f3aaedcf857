#include "orlan/notifications/NotificationEnvelope.hpp"

#include <string_view>

#include "orlan/platform/Url.hpp"

namespace orlan {
namespace {

std::optional<std::string> textAt(const json::Object& info, std::string_view key) {
  const json::Value* value = info.find(key);
  const auto* text = value ? value->string() : nullptr;
  return text ? std::optional(*text) : std::nullopt;
}

}  // namespace

std::optional<std::string> NotificationEnvelope::mediaType() const {
  return textAt(userInfo, "mediaType");
}

std::optional<std::string> NotificationEnvelope::mediaUrl() const {
  auto text = textAt(userInfo, "mediaUrl");
  return text && parseUrl(*text) ? text : std::nullopt;
}

}  // namespace orlan
