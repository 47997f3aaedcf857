#include "orlan/platform/Url.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "orlan/base/ascii.hpp"
#include "orlan/base/text.hpp"

namespace orlan {
namespace {

constexpr std::string_view nameMarks = "-._~!$&'()*+,;=";
constexpr std::string_view userMarks = "-._~!$&'()*+,;=:";
constexpr std::string_view pathMarks = "-._~!$&'()*+,;=:@/?";

bool isLetter(char c) {
  return ascii::lowered(c) >= 'a' && ascii::lowered(c) <= 'z';
}

bool isHexDigit(char c) {
  return ascii::isDigit(c) || (ascii::lowered(c) >= 'a' && ascii::lowered(c) <= 'f');
}

/// Letters, digits, `marks` and whole percent escapes.
bool isMadeOf(std::string_view text, std::string_view marks) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%') {
      if (i + 2 >= text.size() || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2])) return false;
    } else if (!isLetter(text[i]) && !ascii::isDigit(text[i]) && marks.find(text[i]) == marks.npos) {
      return false;
    }
  }
  return true;
}

bool isScheme(std::string_view text) {
  return !text.empty() && isLetter(text.front()) && text.find('%') == text.npos && isMadeOf(text, "+-.");
}

bool isNumber(std::string_view text, std::int64_t lowest, std::int64_t highest) {
  if (!std::all_of(text.begin(), text.end(), ascii::isDigit)) return false;
  const auto number = text::toInteger(text);
  return number && *number >= lowest && *number <= highest;
}

bool isIpv4(std::string_view text) {
  const auto parts = text::split(text, '.');
  return parts.size() == 4 && std::count(text.begin(), text.end(), '.') == 3 &&
         std::all_of(parts.begin(), parts.end(), [](const auto& part) { return isNumber(part, 0, 255); });
}

bool isIpv6(std::string_view text) {
  const auto gap = text.find("::");
  const bool hasGap = gap != text.npos;
  if (hasGap && text.find("::", gap + 1) != text.npos) return false;
  if (text.starts_with(':') && !text.starts_with("::")) return false;
  if (text.ends_with(':') && !text.ends_with("::")) return false;
  auto groups = text::split(text, ':');
  std::size_t count = groups.size();
  if (!groups.empty() && text.ends_with(groups.back()) && isIpv4(groups.back())) {
    groups.pop_back();
    ++count;  // stands for two groups
  }
  return (hasGap ? count <= 7 : count == 8) &&
         std::all_of(groups.begin(), groups.end(), [](const std::string& group) {
           return group.size() <= 4 && std::all_of(group.begin(), group.end(), isHexDigit);
         });
}

/// Of "user@host:port"; false when it is no such thing.
bool readAuthority(std::string_view authority, UrlParts& url) {
  if (const auto at = authority.find('@'); at != authority.npos) {
    if (!isMadeOf(authority.substr(0, at), userMarks)) return false;
    url.hasUserInfo = true;
    authority.remove_prefix(at + 1);
  }
  const bool bracketed = authority.starts_with('[');
  const auto end = std::min(authority.find(bracketed ? ']' : ':'), authority.size());
  if (bracketed && end == authority.size()) return false;
  url.host = bracketed ? authority.substr(1, end - 1) : authority.substr(0, end);
  const auto rest = authority.substr(bracketed ? end + 1 : end);
  if (!rest.empty() && (rest.front() != ':' || !isNumber(rest.substr(1), 1, 65535))) return false;
  if (bracketed) return isIpv6(url.host);
  return isMadeOf(url.host, nameMarks) && !url.host.starts_with('.') && url.host.find("..") == url.host.npos;
}

bool isWeb(const UrlParts& url) {
  return ascii::equalsIgnoringCase(url.scheme, "https") || ascii::equalsIgnoringCase(url.scheme, "http");
}

}  // namespace

std::optional<UrlParts> parseUrl(std::string_view text) {
  UrlParts url;
  if (const auto colon = text.find(':'); colon < text.find_first_of("/?#")) {
    url.scheme = text.substr(0, colon);
    if (!isScheme(url.scheme)) return std::nullopt;
    text.remove_prefix(colon + 1);
  }
  if (text.starts_with("//")) {
    text.remove_prefix(2);
    const auto end = std::min(text.find_first_of("/?#"), text.size());
    if (!readAuthority(text.substr(0, end), url)) return std::nullopt;
    text.remove_prefix(end);
  }
  url.path = text;
  const auto fragment = std::min(text.find('#'), text.size());
  if (!isMadeOf(text.substr(0, fragment), pathMarks)) return std::nullopt;
  if (fragment < text.size() && !isMadeOf(text.substr(fragment + 1), pathMarks)) return std::nullopt;
  const bool isNothing = url.scheme.empty() && url.host.empty() && text.empty();
  if (isNothing || (isWeb(url) && url.host.empty())) return std::nullopt;
  return url;
}

bool isLoopback(std::string_view host) {
  return ascii::equalsIgnoringCase(host, "localhost") || host == "::1" ||
         (host.starts_with("127.") && isIpv4(host));
}

bool isSecureUrl(std::string_view text) {
  const auto url = parseUrl(text);
  return url && isWeb(*url) && !url->hasUserInfo &&
         (ascii::equalsIgnoringCase(url->scheme, "https") || isLoopback(url->host));
}

}  // namespace orlan
