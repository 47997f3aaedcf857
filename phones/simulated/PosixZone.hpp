#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>

namespace orlan::sim {

/// A zone in the form of the POSIX TZ variable, "CET-1CEST,M3.5.0,M10.5.0/3": a standard time and perhaps a
/// daylight-saving time between two rules that hold every year. Compiled zone files end with one.
class PosixZone {
 public:
  PosixZone() = default;

  /// Nothing when the text is no such zone. Daylight saving without rules is not accepted: zone files have
  /// none.
  [[nodiscard]] static std::optional<PosixZone> parse(std::string_view text);

  /// East of UTC at `time`, seconds since 1970.
  [[nodiscard]] std::chrono::seconds offsetAt(std::int64_t time) const;

 private:
  friend class PosixZoneParser;

  /// The day and local second of a year at which the offset changes.
  struct Rule {
    enum class Kind { weekdayOfMonth, dayOfYear, dayOfYearWithoutLeapDay } kind = Kind::dayOfYear;
    int month = 0;  // 1 to 12
    int week = 0;   // 1 to 5; 5: the last
    int day = 0;    // weekday 0 (Sunday) to 6, or day of the year
    std::chrono::seconds time{7200};

    /// Seconds since 1970, local time.
    [[nodiscard]] std::int64_t in(std::chrono::year year) const;
  };

  std::chrono::seconds standard_{};  // east
  std::chrono::seconds daylight_{};
  bool hasDaylight_ = false;
  Rule start_;
  Rule end_;
};

}  // namespace orlan::sim
