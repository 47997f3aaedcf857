#include <algorithm>
#include <cmath>

#include "orlan/base/text.hpp"
#include "phones/linux/IsoTime.hpp"
#include "phones/linux/NmeaSentence.hpp"
#include "phones/linux/Track.hpp"

namespace orlan::linuxphone {
namespace {

constexpr Duration day = std::chrono::hours(24);

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
bool read(const nmea::Sentence& sentence, Epoch& epoch) {
  if (sentence.type == "RMC") {
    const bool isActive = sentence.field(2) == "A";
    if (!isActive) epoch.saysNoFix = true;
    if (isActive) epoch.date = dayOf(sentence.field(9));  // a receiver without a fix makes dates up
    if (!epoch.coordinate) epoch.coordinate = nmea::coordinate(sentence, 3);
  } else if (sentence.type == "GGA") {
    if (sentence.field(6).empty() || sentence.field(6) == "0") epoch.saysNoFix = true;
    if (const auto position = nmea::coordinate(sentence, 2)) epoch.coordinate = position;
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

void add(Stream& stream, const nmea::Sentence& sentence) {
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
    const auto line = nmea::readLine(bytes.substr(begin, end - begin));
    if (line.kind == nmea::LineKind::damaged) ++stream.damaged;
    if (line.kind == nmea::LineKind::sentence) add(stream, line.sentence);
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
