#include <utf8proc.h>

#include <limits>

#include "orlan/base/text.hpp"
#include "orlan/base/utf8.hpp"

namespace orlan::text {
namespace {

struct Extent {
  std::size_t characters = 0;
  std::size_t bytes = 0;
};

/// The first characters of `text`, at most `limit` of them. A byte that is not UTF-8 counts as one.
Extent extent(std::string_view text, std::size_t limit) {
  Extent seen;
  utf8proc_int32_t state = 0;
  CodePoint previous;
  while (seen.bytes < text.size()) {
    const CodePoint next = firstCodePoint(text.substr(seen.bytes));
    bool begins = true;
    if (previous.valid() && next.valid()) {
      begins = utf8proc_grapheme_break_stateful(previous.value, next.value, &state);
    } else {
      state = 0;
    }
    if (begins && seen.characters == limit) break;
    if (begins) ++seen.characters;
    seen.bytes += next.length;
    previous = next;
  }
  return seen;
}

}  // namespace

std::size_t characterCount(std::string_view text) {
  return extent(text, std::numeric_limits<std::size_t>::max()).characters;
}

std::string_view prefix(std::string_view text, std::size_t count) {
  return text.substr(0, extent(text, count).bytes);
}

}  // namespace orlan::text
