#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "orlan/platform/Coordinate.hpp"

/// One line of an NMEA 0183 stream. Pure functions.
namespace orlan::linuxphone::nmea {

/// A sentence whose checksum is right, in views into its line.
struct Sentence {
  std::string_view type;                 // "RMC", without the talker
  std::vector<std::string_view> fields;  // behind the address

  /// Empty when there is no such field. Counted from 1, as in the sentences' descriptions.
  [[nodiscard]] std::string_view field(std::size_t number) const;
};

enum class LineKind { sentence, damaged, other };

struct Line {
  LineKind kind =
      LineKind::other;  // damaged: it begins like a sentence, but its checksum is missing or wrong
  Sentence sentence;
};

[[nodiscard]] Line readLine(std::string_view line);

/// Latitude, hemisphere, longitude and hemisphere in four fields from `first` on ("3725.58362", "N", …).
[[nodiscard]] std::optional<Coordinate> coordinate(const Sentence& sentence, std::size_t first);

}  // namespace orlan::linuxphone::nmea
