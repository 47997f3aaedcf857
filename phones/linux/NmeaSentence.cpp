#include "phones/linux/NmeaSentence.hpp"

#include <cmath>

#include "orlan/base/text.hpp"
#include "phones/linux/IsoTime.hpp"

namespace orlan::linuxphone::nmea {
namespace {

std::optional<unsigned> hexDigit(char c) {
  if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
  if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A' + 10);
  if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a' + 10);
  return std::nullopt;
}

/// `body` stands between "$" and "*".
bool checksumMatches(std::string_view body, std::string_view digits) {
  if (digits.size() < 2) return false;
  const auto high = hexDigit(digits[0]);
  const auto low = hexDigit(digits[1]);
  unsigned sum = 0;
  for (const char c : body) sum ^= static_cast<unsigned char>(c);
  return high && low && sum == *high * 16 + *low;
}

/// "3725.58362" as degrees and minutes.
std::optional<double> degrees(std::string_view text, double limit) {
  const auto point = std::min(text.find('.'), text.size());
  if (point < 3 || text.find_first_not_of("0123456789.") != text.npos) return std::nullopt;
  const auto whole = text::toDouble(text.substr(0, point - 2));
  const auto minutes = text::toDouble(text.substr(point - 2));
  if (!whole || !minutes || *minutes >= 60.0) return std::nullopt;
  const double value = *whole + *minutes / 60.0;
  return value <= limit ? std::optional(value) : std::nullopt;
}

std::optional<double> sign(std::string_view hemisphere, std::string_view positive,
                           std::string_view negative) {
  if (hemisphere == positive) return 1.0;
  if (hemisphere == negative) return -1.0;
  return std::nullopt;
}

}  // namespace

std::string_view Sentence::field(std::size_t number) const {
  return number <= fields.size() ? fields[number - 1] : std::string_view();
}

Line readLine(std::string_view line) {
  // A sentence that was cut off may stand in front of a whole one.
  const auto start = line.rfind('$');
  if (start == line.npos) return {};
  line.remove_prefix(start + 1);
  const auto star = line.find('*');
  if (star == line.npos || !checksumMatches(line.substr(0, star), line.substr(star + 1))) {
    return {LineKind::damaged, {}};
  }
  line = line.substr(0, star);
  const auto comma = line.find(',');
  if (comma != 5) return {};  // two letters for the talker, three for the type; others are a maker's own
  Sentence sentence{line.substr(2, 3), {}};
  for (std::size_t begin = comma + 1; begin <= line.size();) {
    const auto end = std::min(line.find(',', begin), line.size());
    sentence.fields.push_back(line.substr(begin, end - begin));
    begin = end + 1;
  }
  return {LineKind::sentence, std::move(sentence)};
}

std::optional<Duration> timeOfDay(std::string_view text) {
  const auto hour = takeNumber(text, 2);
  const auto minute = takeNumber(text, 2);
  const auto second = parseSeconds(text);
  if (!hour || !minute || !second || *hour > 23 || *minute > 59) return std::nullopt;
  return std::chrono::hours(*hour) + std::chrono::minutes(*minute) + *second;
}

std::optional<std::chrono::sys_days> date(std::string_view text) {
  const auto day = takeNumber(text, 2);
  const auto month = takeNumber(text, 2);
  const auto year = takeNumber(text, 2);
  if (!day || !month || !year || !text.empty()) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year(*year + (*year < 80 ? 2000 : 1900)),
                                         std::chrono::month(static_cast<unsigned>(*month)),
                                         std::chrono::day(static_cast<unsigned>(*day))};
  return date.ok() ? std::optional(std::chrono::sys_days(date)) : std::nullopt;
}

std::optional<Coordinate> coordinate(const Sentence& sentence, std::size_t first) {
  const auto latitude = degrees(sentence.field(first), 90.0);
  const auto north = sign(sentence.field(first + 1), "N", "S");
  const auto longitude = degrees(sentence.field(first + 2), 180.0);
  const auto east = sign(sentence.field(first + 3), "E", "W");
  if (!latitude || !north || !longitude || !east) return std::nullopt;
  return Coordinate{*latitude * *north, *longitude * *east};
}

}  // namespace orlan::linuxphone::nmea
