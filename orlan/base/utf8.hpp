#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Stepping through UTF-8, for the sources of this folder.
namespace orlan::text {

/// One code point and how many bytes it took. A byte that is part of no valid sequence stands alone and has
/// no code point (`value` is negative).
struct CodePoint {
  std::int32_t value = -1;
  std::size_t length = 1;

  [[nodiscard]] bool valid() const { return value >= 0; }
};

/// The first code point of `text`, which must not be empty.
[[nodiscard]] CodePoint firstCodePoint(std::string_view text);

void appendCodePoint(std::string& out, std::int32_t codePoint);

}  // namespace orlan::text
