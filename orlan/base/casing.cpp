#include <utf8proc.h>

#include <algorithm>
#include <iterator>

#include "orlan/base/specialCasing.hpp"
#include "orlan/base/text.hpp"
#include "orlan/base/utf8.hpp"

namespace orlan::text {
namespace {

void appendUpper(std::string& out, std::int32_t codePoint) {
  const auto special =
      std::lower_bound(std::begin(specialUppers), std::end(specialUppers), codePoint,
                       [](const SpecialUpper& row, std::int32_t wanted) { return row.from < wanted; });
  if (special == std::end(specialUppers) || special->from != codePoint) {
    appendCodePoint(out, utf8proc_toupper(codePoint));
    return;
  }
  for (const std::int32_t part : special->to) {
    if (part != 0) appendCodePoint(out, part);
  }
}

void appendLower(std::string& out, std::int32_t codePoint) {
  if (codePoint == 0x130) {  // capital i with dot: the dot stays, as a combining one
    out += "i\u0307";
    return;
  }
  appendCodePoint(out, utf8proc_tolower(codePoint));
}

template <class Append>
std::string mapped(std::string_view text, Append append) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const CodePoint next = firstCodePoint(text);
    if (next.valid()) {
      append(out, next.value);
    } else {
      out += text.front();
    }
    text.remove_prefix(next.length);
  }
  return out;
}

}  // namespace

std::string upper(std::string_view text) {
  return mapped(text, appendUpper);
}
std::string lower(std::string_view text) {
  return mapped(text, appendLower);
}

}  // namespace orlan::text
