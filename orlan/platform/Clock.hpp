#pragma once

#include <chrono>

#include "orlan/base/Time.hpp"

namespace orlan {

/// The wall clock and the phone's time zone. Any thread. The clock may jump either way between two calls.
class Clock {
 public:
  virtual ~Clock() = default;

  [[nodiscard]] virtual TimePoint now() const = 0;

  /// How far local time is ahead of UTC at `time`.
  [[nodiscard]] virtual std::chrono::seconds offsetFromUtc(TimePoint time) const = 0;
};

}  // namespace orlan
