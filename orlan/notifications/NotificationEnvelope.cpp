#include "orlan/notifications/NotificationEnvelope.hpp"

#include <algorithm>
#include <string_view>

#include "orlan/base/ascii.hpp"

namespace orlan {
namespace {

bool isHexDigit(char c) {
  const char low = ascii::lowered(c);
  return ascii::isDigit(c) || (low >= 'a' && low <= 'f');
}

bool isLetter(char c) {
  const char low = ascii::lowered(c);
  return low >= 'a' && low <= 'z';
}

bool isUrlCharacter(char c) {
  constexpr std::string_view marks = "-._~:/?#[]@!$&'()*+,;=";
  return isLetter(c) || ascii::isDigit(c) || marks.find(c) != std::string_view::npos;
}

bool isScheme(std::string_view text) {
  constexpr std::string_view marks = "+-.";
  return !text.empty() && isLetter(text.front()) && std::all_of(text.begin(), text.end(), [&](char c) {
    return isLetter(c) || ascii::isDigit(c) || marks.find(c) != std::string_view::npos;
  });
}

bool isUrl(std::string_view text) {
  const auto colon = text.find(':');
  if (colon < text.find_first_of("/?#") && !isScheme(text.substr(0, colon))) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      if (!isUrlCharacter(text[i])) return false;
    } else if (i + 2 >= text.size() || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2])) {
      return false;
    }
  }
  return !text.empty();
}

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
  return text && isUrl(*text) ? text : std::nullopt;
}

}  // namespace orlan
