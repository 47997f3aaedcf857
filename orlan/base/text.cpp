#include "orlan/base/text.hpp"

#include <fmt/format.h>

#include "orlan/base/utf8.hpp"

namespace orlan::text {
namespace {

/// Unicode's White_Space, which has every line break in it.
bool isWhiteSpace(std::int32_t c) {
  return (c >= 0x09 && c <= 0x0D) || c == 0x20 || c == 0x85 || c == 0xA0 || c == 0x1680 ||
         (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F ||
         c == 0x3000;
}

bool isControl(std::int32_t c) {
  return c < 0x20 || (c >= 0x7F && c <= 0x9F);
}

std::string escaped(std::int32_t control) {
  if (control == '\n') return "\\n";
  if (control == '\r') return "\\r";
  if (control == '\t') return "\\t";
  return fmt::format("\\u{:04x}", control);
}

}  // namespace

std::string_view trimmed(std::string_view text) {
  while (!text.empty()) {
    const CodePoint first = firstCodePoint(text);
    if (!isWhiteSpace(first.value)) break;
    text.remove_prefix(first.length);
  }
  std::size_t end = 0;
  for (std::size_t at = 0; at < text.size();) {
    const CodePoint next = firstCodePoint(text.substr(at));
    at += next.length;
    if (!isWhiteSpace(next.value)) end = at;
  }
  return text.substr(0, end);
}

std::string escapedControls(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const CodePoint next = firstCodePoint(text);
    if (!next.valid()) {
      out += fmt::format("\\x{:02x}", static_cast<unsigned char>(text.front()));
    } else if (isControl(next.value)) {
      out += escaped(next.value);
    } else {
      out += text.substr(0, next.length);
    }
    text.remove_prefix(next.length);
  }
  return out;
}

std::string joined(std::span<const std::string> parts, std::string_view separator) {
  return fmt::format("{}", fmt::join(parts, separator));
}

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    const std::string_view part = text.substr(0, text.find(separator));
    if (!part.empty()) parts.emplace_back(part);
    text.remove_prefix(std::min(part.size() + 1, text.size()));
  }
  return parts;
}

}  // namespace orlan::text
