#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "orlan/base/Result.hpp"
#include "orlan/base/Time.hpp"
#include "phones/simulated/PosixZone.hpp"

namespace orlan::sim {

/// How far local time is from UTC, at any time. Immutable; copies share their data.
class TimeZone {
 public:
  /// UTC.
  TimeZone() = default;

  /// "UTC", "GMT" or "Z"; a fixed offset, positive east, with any of these in front or nothing ("GMT+2",
  /// "+02:00", "-0330"); or a name of the machine's zone data ("Europe/London"). The error (domain
  /// "TimeZone") says what is wrong with any other name.
  [[nodiscard]] static Result<TimeZone> named(std::string_view name);

  /// From the bytes of a compiled zone file (RFC 8536, version 2 or later).
  [[nodiscard]] static Result<TimeZone> fromZoneFile(std::string_view bytes);

  [[nodiscard]] static TimeZone fixed(std::chrono::seconds eastOfUtc);

  [[nodiscard]] std::chrono::seconds offsetAt(TimePoint time) const;

 private:
  struct Change {
    std::int64_t at;  // seconds since 1970
    std::chrono::seconds offset;
  };
  struct Zone {
    std::chrono::seconds first{};  // before the first change
    std::vector<Change> changes;   // in order of time
    PosixZone afterwards;          // from the last change on, when it says something
    bool hasAfterwards = false;
  };

  std::shared_ptr<const Zone> zone_;  // none: UTC
};

}  // namespace orlan::sim
