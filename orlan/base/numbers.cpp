#include <locale.h>
#include <stdlib.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

#include "orlan/base/text.hpp"

namespace orlan::text {
namespace {

bool isSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

/// The C library's reading for the forms that the fast path leaves: a leading '+', hexadecimal and what a
/// double cannot hold. On a locale object of its own, for `strtod` obeys the host's.
std::optional<double> toDoubleSlowly(std::string_view text) {
  static const locale_t plain = newlocale(LC_ALL_MASK, "C", locale_t{});
  const std::string terminated(text);
  char* end = nullptr;
  const double value = strtod_l(terminated.c_str(), &end, plain);
  if (end != terminated.c_str() + terminated.size()) return std::nullopt;
  return value;
}

}  // namespace

std::string fromDouble(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
  const double magnitude = std::fabs(value);
  const bool plain = magnitude == 0.0 || (magnitude >= 1e-4 && magnitude < 1e16);
  std::array<char, 32> buffer;  // at most 24 characters in either form
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 plain ? std::chars_format::fixed : std::chars_format::scientific)
                       .ptr;
  std::string text(buffer.data(), end);
  if (plain && text.find('.') == std::string::npos) text += ".0";
  return text;
}

std::string fixed(double value, int places) {
  places = std::max(places, 0);
  std::string text(static_cast<std::size_t>(places) + 320, '\0');  // the largest double has 309 digits
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, places).ptr;
  text.resize(static_cast<std::size_t>(end - text.data()));
  return text;
}

std::optional<double> toDouble(std::string_view text) {
  if (text.empty() || isSpace(text.front())) return std::nullopt;
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc{} && end == text.data() + text.size()) return value;
  return toDoubleSlowly(text);
}

std::optional<std::int64_t> toInteger(std::string_view text) {
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return std::nullopt;
  }
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace orlan::text
