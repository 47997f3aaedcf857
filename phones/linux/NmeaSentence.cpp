#include "phones/linux/NmeaSentence.hpp"

#include <algorithm>
#include <charconv>

#include "orlan/base/text.hpp"

namespace orlan::linuxphone::nmea {
namespace {

/// `body` stands between "$" and "*".
bool checksumMatches(std::string_view body, std::string_view digits) {
  unsigned stated = 0;
  const auto two = digits.substr(0, 2);
  const auto read = std::from_chars(two.data(), two.data() + two.size(), stated, 16);
  for (const char c : body) stated ^= static_cast<unsigned char>(c);
  return two.size() == 2 && read.ptr == two.data() + 2 && stated == 0;
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

std::optional<Coordinate> coordinate(const Sentence& sentence, std::size_t first) {
  const auto latitude = degrees(sentence.field(first), 90.0);
  const auto north = sign(sentence.field(first + 1), "N", "S");
  const auto longitude = degrees(sentence.field(first + 2), 180.0);
  const auto east = sign(sentence.field(first + 3), "E", "W");
  if (!latitude || !north || !longitude || !east) return std::nullopt;
  return Coordinate{*latitude * *north, *longitude * *east};
}

}  // namespace orlan::linuxphone::nmea
