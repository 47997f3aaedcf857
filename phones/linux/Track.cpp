#include "phones/linux/Track.hpp"

#include "orlan/base/text.hpp"
#include "phones/linux/disk.hpp"

namespace orlan::linuxphone {
namespace {

constexpr std::size_t longestTrack = std::size_t{256} << 20;  // bytes
constexpr Duration assumedStep = std::chrono::seconds(1);

bool looksLikeXml(std::string_view bytes) {
  if (bytes.starts_with("\xff\xfe") || bytes.starts_with("\xfe\xff")) return true;
  if (bytes.starts_with("\xef\xbb\xbf")) bytes.remove_prefix(3);
  const auto start = bytes.find_first_not_of(" \t\r\n");
  return start != bytes.npos && bytes[start] == '<';
}

}  // namespace

Result<Track> readTrack(const std::string& path) {
  auto wrong = [&](const std::string& what) {
    return Unexpected(Error{"Track", -1, text::escapedControls(path + ": " + what)});
  };
  const auto bytes = disk::read(path, longestTrack);
  if (!bytes) return wrong(bytes.error().message());
  if (bytes->empty()) return wrong("the file is empty");
  auto track = looksLikeXml(*bytes) ? parseGpx(*bytes) : parseNmea(*bytes);
  if (!track) return wrong(track.error());
  return std::move(*track);
}

std::vector<TimePoint> filledTimes(const std::vector<std::optional<TimePoint>>& times) {
  std::vector<TimePoint> filled(times.size());
  std::optional<std::size_t> before;  // the last timed one so far
  for (std::size_t i = 0; i < times.size(); ++i) {
    if (!times[i]) {
      if (before) filled[i] = filled[i - 1] + assumedStep;
      continue;
    }
    filled[i] = *times[i];
    const auto gap = static_cast<Duration::rep>(i - before.value_or(0));
    for (auto k = before ? *before + 1 : 0; k < i; ++k) {
      const auto left = static_cast<Duration::rep>(i - k);
      filled[k] =
          before ? filled[i] - (filled[i] - filled[*before]) / gap * left : filled[i] - assumedStep * left;
    }
    before = i;
  }
  if (before) return filled;
  for (std::size_t i = 0; i < filled.size(); ++i) filled[i] = TimePoint(assumedStep * i);
  return filled;
}

}  // namespace orlan::linuxphone
