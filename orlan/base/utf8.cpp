#include "orlan/base/utf8.hpp"

#include <utf8proc.h>

#include <algorithm>
#include <array>

#include "orlan/base/text.hpp"

namespace orlan::text {

CodePoint firstCodePoint(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  if (lead < 0x80) return {lead, 1};
  utf8proc_int32_t value = -1;
  const auto length =
      utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                       static_cast<utf8proc_ssize_t>(std::min<std::size_t>(text.size(), 4)), &value);
  if (length < 1) return {};
  return {value, static_cast<std::size_t>(length)};
}

void appendCodePoint(std::string& out, std::int32_t codePoint) {
  std::array<utf8proc_uint8_t, 4> bytes;
  const auto length = utf8proc_encode_char(codePoint, bytes.data());
  out.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(length));
}

std::string_view utf8Or(std::string_view bytes, std::string_view otherwise) {
  return isUtf8(bytes) ? bytes : otherwise;
}

}  // namespace orlan::text
