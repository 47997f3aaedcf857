#include "tools/orlan/backend/Field.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>

#include "orlan/base/ascii.hpp"
#include "orlan/base/text.hpp"

namespace orlan::devbackend {
namespace {

bool holds(const Rule& rule, std::string_view value) {
  if (rule.holds != nullptr) return rule.holds(value);
  const auto words = text::split(rule.expected, '|');
  return words.empty() || std::find(words.begin(), words.end(), value) != words.end();
}

/// Whether `text` has the shape of `pattern`, in which 'X' stands for an upper-case hexadecimal digit, '0'
/// for a digit and everything else for itself.
bool hasShape(std::string_view text, std::string_view pattern) {
  return std::equal(text.begin(), text.end(), pattern.begin(), pattern.end(), [](char c, char shape) {
    if (shape == 'X') return ascii::isDigit(c) || (c >= 'A' && c <= 'F');
    if (shape == '0') return ascii::isDigit(c);
    return c == shape;
  });
}

bool isShortest(std::string_view text, double limit) {
  const auto value = text::toDouble(text);
  return value && std::abs(*value) <= limit && text::fromDouble(*value) == text;
}

}  // namespace

void checkValue(const Rule& rule, std::string_view where, std::string_view value, Problems& problems) {
  if (holds(rule, value)) return;
  problems.push_back(fmt::format("{}: expected {}, found {}", where, rule.expected, excerpt(value)));
}

bool isFilled(std::string_view text) {
  return !text.empty();
}

bool isUuid(std::string_view text) {
  return hasShape(text, "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX");
}

bool isDateTime(std::string_view text) {
  if (!hasShape(text, "0000-00-00 00:00:00")) return false;
  const auto number = [&](std::size_t at, std::size_t digits) {
    return static_cast<int>(*text::toInteger(text.substr(at, digits)));
  };
  const std::chrono::year_month_day day{std::chrono::year(number(0, 4)),
                                        std::chrono::month(static_cast<unsigned>(number(5, 2))),
                                        std::chrono::day(static_cast<unsigned>(number(8, 2)))};
  return day.ok() && number(11, 2) < 24 && number(14, 2) < 60 && number(17, 2) <= 60;
}

bool isPlainInteger(std::string_view text) {
  const auto value = text::toInteger(text);
  return value && fmt::format("{}", *value) == text;
}

bool isLatitude(std::string_view text) {
  return isShortest(text, 90.0);
}

bool isLongitude(std::string_view text) {
  return isShortest(text, 180.0);
}

}  // namespace orlan::devbackend
