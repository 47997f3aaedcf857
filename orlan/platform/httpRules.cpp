#include "orlan/platform/httpRules.hpp"

#include <algorithm>
#include <string>
#include <string_view>

#include "orlan/platform/Url.hpp"

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

}  // namespace

std::optional<Error> refusal(const HttpRequest& request) {
  if (!isSecureUrl(request.url)) return urlErrors::badURL();
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
