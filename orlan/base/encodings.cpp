#include "orlan/base/text.hpp"

namespace orlan::text {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::uint32_t byteAt(std::string_view bytes, std::size_t index) {
  return index < bytes.size() ? static_cast<unsigned char>(bytes[index]) : 0U;
}

}  // namespace

std::string hex(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string out;
  out.reserve(bytes.size() * 2);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    out += digits[byte >> 4U];
    out += digits[byte & 0xFU];
  }
  return out;
}

std::string base64(std::string_view bytes) {
  std::string out;
  out.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::uint32_t group = byteAt(bytes, i) << 16U | byteAt(bytes, i + 1) << 8U | byteAt(bytes, i + 2);
    out += alphabet[group >> 18U];
    out += alphabet[group >> 12U & 63U];
    out += i + 1 < bytes.size() ? alphabet[group >> 6U & 63U] : '=';
    out += i + 2 < bytes.size() ? alphabet[group & 63U] : '=';
  }
  return out;
}

std::optional<std::string> fromBase64(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
  text.remove_suffix(padding);

  std::string out;
  out.reserve(text.size() / 4 * 3 + 2);
  std::uint32_t bits = 0;
  int held = 0;
  for (const char c : text) {
    const auto digit = alphabet.find(c);
    if (digit == std::string_view::npos) return std::nullopt;
    bits = bits << 6U | static_cast<std::uint32_t>(digit);
    held += 6;
    if (held >= 8) {
      held -= 8;
      out += static_cast<char>(bits >> static_cast<unsigned>(held) & 0xFFU);
    }
  }
  // What is left of the last digit must be zero: one byte string has one text.
  if ((bits & ((1U << static_cast<unsigned>(held)) - 1U)) != 0) return std::nullopt;
  return out;
}

}  // namespace orlan::text
