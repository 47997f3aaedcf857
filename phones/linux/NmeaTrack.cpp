#include <algorithm>
#include <charconv>
#include <cmath>

#include "orlan/base/text.hpp"
#include "phones/linux/IsoTime.hpp"
#include "phones/linux/Track.hpp"

namespace orlan::linuxphone {
namespace {

constexpr Duration day = std::chrono::hours(24);

/// A sentence whose checksum is right, in views into its line.
struct Sentence {
  std::string_view type;                 // "RMC", without the talker
  std::vector<std::string_view> fields;  // behind the address

  /// Empty when there is no such field. Counted from 1, as in the sentences' descriptions.
  [[nodiscard]] std::string_view field(std::size_t number) const {
    return number <= fields.size() ? fields[number - 1] : std::string_view();
  }
};

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

/// What stands between "$" and "*" in a line with a right checksum; `damaged` counts those whose checksum is
/// missing or wrong. Nothing for every other line.
std::optional<std::string_view> content(std::string_view line, std::size_t& damaged) {
  // A sentence that was cut off may stand in front of a whole one.
  const auto start = line.rfind('$');
  if (start == line.npos) return std::nullopt;
  line.remove_prefix(start + 1);
  const auto star = line.find('*');
  if (star != line.npos && checksumMatches(line.substr(0, star), line.substr(star + 1))) {
    return line.substr(0, star);
  }
  ++damaged;
  return std::nullopt;
}

/// Nothing when it is a maker's own: others have two letters for the talker and three for the type.
std::optional<Sentence> sentence(std::string_view body) {
  const auto comma = body.find(',');
  if (comma != 5) return std::nullopt;
  Sentence read{body.substr(2, 3), {}};
  for (std::size_t begin = comma + 1; begin <= body.size();) {
    const auto end = std::min(body.find(',', begin), body.size());
    read.fields.push_back(body.substr(begin, end - begin));
    begin = end + 1;
  }
  return read;
}

/// Latitude, hemisphere, longitude and hemisphere in four fields from `first` on ("3725.58362", "N", …).
std::optional<Coordinate> coordinate(const Sentence& sentence, std::size_t first) {
  const auto latitude = degrees(sentence.field(first), 90.0);
  const auto north = sign(sentence.field(first + 1), "N", "S");
  const auto longitude = degrees(sentence.field(first + 2), 180.0);
  const auto east = sign(sentence.field(first + 3), "E", "W");
  if (!latitude || !north || !longitude || !east) return std::nullopt;
  return Coordinate{*latitude * *north, *longitude * *east};
}

/// What the sentences of one instant say together.
struct Epoch {
  Duration timeOfDay{};
  std::optional<TimePoint> date;
  std::optional<Coordinate> coordinate;
  bool saysNoFix = false;
  std::optional<double> dop;
  std::optional<double> deviation;  // metres

  [[nodiscard]] bool hasFix() const { return coordinate && !saysNoFix; }
  [[nodiscard]] double accuracy() const {
    if (deviation) return *deviation;
    return dop ? *dop * metresPerDop : assumedAccuracy;
  }
};

std::optional<double> positive(std::string_view text) {
  const auto number = text::toDouble(text);
  return number && std::isfinite(*number) && *number > 0 ? number : std::nullopt;
}

/// "070220".
std::optional<TimePoint> dayOf(std::string_view text) {
  const auto read = takeDate(text, "%d%m%y");
  return text.empty() ? read : std::nullopt;
}

/// False for a sentence that we do not read.
bool read(const Sentence& sentence, Epoch& epoch) {
  if (sentence.type == "RMC") {
    const bool isActive = sentence.field(2) == "A";
    if (!isActive) epoch.saysNoFix = true;
    if (isActive) epoch.date = dayOf(sentence.field(9));  // a receiver without a fix makes dates up
    if (!epoch.coordinate) epoch.coordinate = coordinate(sentence, 3);
  } else if (sentence.type == "GGA") {
    if (sentence.field(6).empty() || sentence.field(6) == "0") epoch.saysNoFix = true;
    if (const auto position = coordinate(sentence, 2)) epoch.coordinate = position;
    epoch.dop = positive(sentence.field(8));
  } else if (sentence.type == "GST") {
    const auto north = positive(sentence.field(6));
    const auto east = positive(sentence.field(7));
    if (north && east) epoch.deviation = std::hypot(*north, *east);
  } else {
    return false;
  }
  return true;
}

struct Stream {
  std::vector<Epoch> epochs;
  std::size_t damaged = 0;  // lines
};

void add(Stream& stream, const Sentence& sentence) {
  std::string_view field = sentence.field(1);
  const auto time = takeTimeOfDay(field, "%H%M%S");
  if (!time || !field.empty()) return;
  const bool continues = !stream.epochs.empty() && stream.epochs.back().timeOfDay == *time;
  Epoch epoch = continues ? stream.epochs.back() : Epoch{};
  epoch.timeOfDay = *time;
  if (!read(sentence, epoch)) return;
  if (continues) {
    stream.epochs.back() = epoch;
  } else {
    stream.epochs.push_back(epoch);
  }
}

Stream readStream(std::string_view bytes) {
  Stream stream;
  for (std::size_t begin = 0; begin < bytes.size();) {
    const auto end = std::min(bytes.find_first_of("\r\n", begin), bytes.size());
    const auto line = content(bytes.substr(begin, end - begin), stream.damaged);
    if (const auto whole = line ? sentence(*line) : std::nullopt) add(stream, *whole);
    begin = end + 1;
  }
  return stream;
}

/// The day of `time` when `neighbour` is less than half a day away from it.
TimePoint dayNextTo(Duration time, const Epoch& neighbour) {
  if (time - neighbour.timeOfDay > day / 2) return *neighbour.date - day;
  if (neighbour.timeOfDay - time > day / 2) return *neighbour.date + day;
  return *neighbour.date;
}

void fillDates(std::vector<Epoch>& epochs) {
  const auto dated = std::find_if(epochs.begin(), epochs.end(), [](const Epoch& e) { return e.date; });
  const auto first = dated == epochs.end() ? epochs.begin() : dated;
  if (!first->date) first->date = TimePoint();
  for (auto it = first; it != epochs.begin(); --it) (it - 1)->date = dayNextTo((it - 1)->timeOfDay, *it);
  for (auto it = first + 1; it != epochs.end(); ++it) {
    if (!it->date) it->date = dayNextTo(it->timeOfDay, *(it - 1));
  }
}

std::string nothingUsable(const Stream& stream) {
  std::string why = stream.epochs.empty() ? "neither GPX nor NMEA position sentences (RMC, GGA)"
                                          : "no position fix in " + std::to_string(stream.epochs.size()) +
                                                " epochs of NMEA sentences";
  if (stream.damaged > 0) why += "; lines with a wrong checksum: " + std::to_string(stream.damaged);
  return why;
}

}  // namespace

Result<Track, std::string> parseNmea(std::string_view bytes) {
  Stream stream = readStream(bytes);
  Track track;
  if (!stream.epochs.empty()) fillDates(stream.epochs);
  for (const Epoch& epoch : stream.epochs) {
    if (epoch.hasFix()) {
      track.fixes.push_back({*epoch.coordinate, epoch.accuracy(), *epoch.date + epoch.timeOfDay});
    }
  }
  if (track.fixes.empty()) return Unexpected(nothingUsable(stream));
  std::stable_sort(track.fixes.begin(), track.fixes.end(),
                   [](const Location& a, const Location& b) { return a.timestamp < b.timestamp; });
  return track;
}

}  // namespace orlan::linuxphone
