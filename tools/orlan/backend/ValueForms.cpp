#include "tools/orlan/backend/ValueForms.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>

#include "orlan/base/ascii.hpp"
#include "orlan/base/text.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {
namespace {

/// Whether `text` has the shape of `pattern`, in which 'X' stands for an upper-case hexadecimal digit, '0'
/// for a digit and everything else for itself.
bool hasShape(std::string_view text, std::string_view pattern) {
  return std::equal(text.begin(), text.end(), pattern.begin(), pattern.end(), [](char c, char shape) {
    if (shape == 'X') return ascii::isDigit(c) || (c >= 'A' && c <= 'F');
    if (shape == '0') return ascii::isDigit(c);
    return c == shape;
  });
}

int digits(std::string_view text, std::size_t first, std::size_t count) {
  int value = 0;
  for (const char c : text.substr(first, count)) value = value * 10 + (c - '0');
  return value;
}

}  // namespace

bool isUuid(std::string_view text) {
  return hasShape(text, "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX");
}

bool isDateTime(std::string_view text) {
  if (!hasShape(text, "0000-00-00 00:00:00")) return false;
  const std::chrono::year_month_day day{std::chrono::year(digits(text, 0, 4)),
                                        std::chrono::month(static_cast<unsigned>(digits(text, 5, 2))),
                                        std::chrono::day(static_cast<unsigned>(digits(text, 8, 2)))};
  return day.ok() && digits(text, 11, 2) < 24 && digits(text, 14, 2) < 60 && digits(text, 17, 2) <= 60;
}

bool isPlainInteger(std::string_view text) {
  const auto value = text::toInteger(text);
  return value && fmt::format("{}", *value) == text;
}

std::optional<std::string> degreesProblem(std::string_view text, double limit) {
  const auto value = text::toDouble(text);
  if (!value || !std::isfinite(*value)) {
    return fmt::format("expected degrees as decimal text, found {}", excerpt(text));
  }
  if (const auto shortest = text::fromDouble(*value); shortest != text) {
    return fmt::format("expected the shortest text \"{}\", found {}", shortest, excerpt(text));
  }
  if (std::abs(*value) > limit) {
    return fmt::format("expected -{0} to {0} degrees, found {1}", limit, excerpt(text));
  }
  return std::nullopt;
}

}  // namespace orlan::devbackend
