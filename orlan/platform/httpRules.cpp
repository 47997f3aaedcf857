#include "orlan/platform/httpRules.hpp"

#include <algorithm>
#include <cstdint>
#include <string>

#include "orlan/base/ascii.hpp"
#include "orlan/base/text.hpp"

namespace orlan::phone {

namespace {

bool isVisibleAscii(char c) {
  return c > ' ' && c < '\x7f';
}

// A control character inside a header line would end it and begin another; a tab is allowed there.
bool isControl(char c) {
  const auto byte = static_cast<unsigned char>(c);  // a plain char is signed on some machines only
  return (byte < ' ' && byte != '\t') || byte == 0x7f;
}

bool isToken(std::string_view text) {
  constexpr std::string_view separators = "()<>@,;:\\\"/[]?={}";
  return !text.empty() && std::all_of(text.begin(), text.end(), [&](char c) {
    return isVisibleAscii(c) && separators.find(c) == std::string_view::npos;
  });
}

bool isNumberUpTo(std::string_view text, std::int64_t limit) {
  const bool digits = text.find_first_not_of("0123456789") == std::string_view::npos;
  const auto number = digits ? text::toInteger(text) : std::nullopt;
  return number && *number <= limit;
}

/// "host", "host:port" or "[address]:port" without its port; nothing when it is none of these.
std::optional<std::string_view> hostOf(std::string_view authority) {
  if (authority.find('@') != std::string_view::npos) return std::nullopt;
  std::string_view host = authority;
  std::string_view rest;
  if (authority.starts_with('[')) {
    const auto end = authority.find(']');
    if (end == std::string_view::npos) return std::nullopt;
    host = authority.substr(1, end - 1);
    rest = authority.substr(end + 1);
    if (host.find_first_not_of("0123456789abcdefABCDEF:.") != std::string_view::npos) return std::nullopt;
  } else if (const auto colon = authority.find(':'); colon != std::string_view::npos) {
    host = authority.substr(0, colon);
    rest = authority.substr(colon);
  }
  if (host.empty() || host.find_first_of("[]\"<>\\^`{|}") != std::string_view::npos) return std::nullopt;
  if (!rest.empty() && (rest.front() != ':' || !isNumberUpTo(rest.substr(1), 65535))) return std::nullopt;
  return host;
}

}  // namespace

std::optional<UrlParts> parseUrl(std::string_view text) {
  if (!std::all_of(text.begin(), text.end(), isVisibleAscii)) return std::nullopt;
  const auto colon = text.find("://");
  if (colon == std::string_view::npos) return std::nullopt;
  const std::string_view scheme = text.substr(0, colon);
  if (!ascii::equalsIgnoringCase(scheme, "http") && !ascii::equalsIgnoringCase(scheme, "https"))
    return std::nullopt;
  const std::string_view afterScheme = text.substr(colon + 3);
  const auto end = std::min(afterScheme.find_first_of("/?#"), afterScheme.size());
  const auto host = hostOf(afterScheme.substr(0, end));
  if (!host) return std::nullopt;
  return UrlParts{scheme, *host, afterScheme.substr(end)};
}

bool isLoopback(std::string_view host) {
  if (ascii::equalsIgnoringCase(host, "localhost") || host == "::1") return true;
  const auto parts = text::split(host, '.');
  return parts.size() == 4 && std::count(host.begin(), host.end(), '.') == 3 && parts[0] == "127" &&
         std::all_of(parts.begin(), parts.end(), [](const auto& part) { return isNumberUpTo(part, 255); });
}

bool isAcceptableUrl(std::string_view text) {
  const auto parts = parseUrl(text);
  return parts && (ascii::equalsIgnoringCase(parts->scheme, "https") || isLoopback(parts->host));
}

std::optional<Error> refusal(const HttpRequest& request) {
  if (!isAcceptableUrl(request.url)) return urlErrors::badURL();
  if (!isToken(request.method)) return urlErrors::other("The request method is not valid");
  for (const auto& [name, value] : request.headers) {
    if (!isToken(name)) return urlErrors::other("A header name is not valid");
    if (std::any_of(value.begin(), value.end(), isControl)) {
      return urlErrors::other("A control character stands in the header " + name);
    }
  }
  return std::nullopt;
}

}  // namespace orlan::phone
