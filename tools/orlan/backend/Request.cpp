#include "tools/orlan/backend/Request.hpp"

#include "orlan/base/ascii.hpp"
#include "orlan/base/text.hpp"

namespace orlan::devbackend {
namespace {

std::string_view withoutBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string_view takeLine(std::string_view& rest) {
  const auto end = rest.find('\n');
  auto line = rest.substr(0, end);
  rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

}  // namespace

const std::string* findHeader(const Request& request, std::string_view name) {
  for (const auto& [known, value] : request.headers) {
    if (ascii::equalsIgnoringCase(known, name)) return &value;
  }
  return nullptr;
}

std::string excerpt(std::string_view text, std::size_t limit) {
  auto shown = text.substr(0, limit);
  if (shown.size() < text.size()) {
    // A character of several bytes is shown whole or not at all.
    while (!shown.empty() && (static_cast<unsigned char>(text[shown.size()]) & 0xC0U) == 0x80U) {
      shown.remove_suffix(1);
    }
  }
  return '"' + text::escapedControls(shown) + '"' + (shown.size() < text.size() ? "…" : "");
}

Request parseHead(std::string_view head) {
  Request request;
  const auto first = takeLine(head);
  const auto methodEnd = first.find(' ');
  request.method = first.substr(0, methodEnd);
  if (methodEnd != std::string_view::npos) {
    const auto rest = first.substr(methodEnd + 1);
    request.target = rest.substr(0, rest.find(' '));
  }
  while (!head.empty()) {
    const auto line = takeLine(head);
    const auto colon = line.find(':');
    if (colon == std::string_view::npos || colon == 0) continue;
    request.headers.emplace_back(line.substr(0, colon), withoutBlanks(line.substr(colon + 1)));
  }
  return request;
}

}  // namespace orlan::devbackend
