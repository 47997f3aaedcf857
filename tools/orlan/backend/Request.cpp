#include "tools/orlan/backend/Request.hpp"

#include "orlan/base/ascii.hpp"
#include "orlan/base/text.hpp"

namespace orlan::devbackend {

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

}  // namespace orlan::devbackend
