#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/base/Result.hpp"
#include "orlan/platform/Location.hpp"

namespace orlan::linuxphone {

/// A recorded way: at least one fix, in the order of their times.
struct Track {
  std::vector<Location> fixes;
};

/// Accuracies are metres. Where a file gives none, but a dilution of precision, the fix is taken to be
/// `metresPerDop` times that far off; where it gives nothing, `assumedAccuracy`.
inline constexpr double metresPerDop = 5.0;
inline constexpr double assumedAccuracy = 5.0;

/// A file in GPX or NMEA form, whatever its name says. The error (domain "Track", code -1) is one line,
/// `path: line 12: what is wrong`. A track without any fix is an error.
[[nodiscard]] Result<Track> readTrack(const std::string& path);

/// GPX 1.0 and 1.1: the points of all tracks, or of all routes where there is no track point.
///
/// - A time without a zone is UTC. Points without a time are spread evenly between their timed neighbours;
///   before the first and after the last timed one, and where there is none at all, they are a second apart.
/// - Accuracy: `hAcc` or `accuracy` in the extensions (negative: the fix is not valid), else from `hdop`.
/// - A coordinate or a time that cannot be read is an error, as is a document that is not well-formed.
[[nodiscard]] Result<Track, std::string> parseGpx(std::string_view bytes);

/// NMEA 0183: RMC, GGA and GST sentences of any talker; other lines, and those whose checksum is missing or
/// wrong, are skipped. Sentences of the same time make one epoch.
///
/// - An epoch counts when it has a position and none of its sentences says that there is no fix.
/// - Dates come from RMC; epochs without one continue from their neighbours, over midnight where needed, and
///   a file without any date begins on 1970-01-01.
/// - Accuracy: the root of the squared standard deviations of GST, else from the HDOP of GGA.
[[nodiscard]] Result<Track, std::string> parseNmea(std::string_view bytes);

}  // namespace orlan::linuxphone
