#include "phones/linux/IsoTime.hpp"

#include <algorithm>
#include <chrono>

#include "orlan/base/ascii.hpp"

namespace orlan::linuxphone {
namespace {

bool take(std::string_view& text, char expected) {
  if (!text.starts_with(expected)) return false;
  text.remove_prefix(1);
  return true;
}

std::optional<TimePoint> takeDate(std::string_view& text) {
  const auto year = takeNumber(text, 4);
  if (!year || !take(text, '-')) return std::nullopt;
  const auto month = takeNumber(text, 2);
  if (!month || !take(text, '-')) return std::nullopt;
  const auto day = takeNumber(text, 2);
  if (!day) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year(*year),
                                         std::chrono::month(static_cast<unsigned>(*month)),
                                         std::chrono::day(static_cast<unsigned>(*day))};
  if (!date.ok()) return std::nullopt;
  return std::chrono::sys_days(date);
}

std::optional<Duration> takeTimeOfDay(std::string_view& text) {
  const auto hour = takeNumber(text, 2);
  if (!hour || *hour > 23 || !take(text, ':')) return std::nullopt;
  const auto minute = takeNumber(text, 2);
  if (!minute || *minute > 59 || !take(text, ':')) return std::nullopt;
  const auto end = std::min(text.find_first_not_of("0123456789."), text.size());
  const auto second = parseSeconds(text.substr(0, end));
  if (!second) return std::nullopt;
  text.remove_prefix(end);
  return std::chrono::hours(*hour) + std::chrono::minutes(*minute) + *second;
}

/// How far ahead of UTC the rest of the text says it is.
std::optional<Duration> zone(std::string_view text) {
  if (text.empty() || text == "Z") return Duration(0);
  const bool isEast = text.front() == '+';
  if (!isEast && text.front() != '-') return std::nullopt;
  text.remove_prefix(1);
  const auto hours = takeNumber(text, 2);
  (void)take(text, ':');
  const auto minutes = text.empty() ? std::optional(0) : takeNumber(text, 2);
  if (!hours || !minutes || *hours > 23 || *minutes > 59 || !text.empty()) return std::nullopt;
  const Duration ahead = std::chrono::hours(*hours) + std::chrono::minutes(*minutes);
  return isEast ? ahead : -ahead;
}

}  // namespace

std::optional<int> takeNumber(std::string_view& text, std::size_t digits) {
  if (text.size() < digits || !std::all_of(text.begin(), text.begin() + digits, ascii::isDigit))
    return std::nullopt;
  int number = 0;
  for (const char digit : text.substr(0, digits)) number = number * 10 + (digit - '0');
  text.remove_prefix(digits);
  return number;
}

std::optional<Duration> parseSeconds(std::string_view text) {
  const auto whole = takeNumber(text, 2);
  if (!whole || *whole > 60) return std::nullopt;
  Duration result = std::chrono::seconds(*whole);
  if (text.empty()) return result;
  if (!take(text, '.') || text.empty() || !std::all_of(text.begin(), text.end(), ascii::isDigit))
    return std::nullopt;
  Duration step = std::chrono::milliseconds(100);
  for (std::size_t i = 0; i < std::min<std::size_t>(text.size(), 6); ++i, step /= 10) {
    result += step * (text[i] - '0');
  }
  if (text.size() > 6 && text[6] >= '5') result += Duration(1);
  return result;
}

std::optional<TimePoint> parseIsoTime(std::string_view text) {
  const auto date = takeDate(text);
  if (!date || (!take(text, 'T') && !take(text, ' '))) return std::nullopt;
  const auto timeOfDay = takeTimeOfDay(text);
  if (!timeOfDay) return std::nullopt;
  const auto ahead = zone(text);
  if (!ahead) return std::nullopt;
  return *date + *timeOfDay - *ahead;
}

}  // namespace orlan::linuxphone
