#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "orlan/campaigns/ReliabilityEvents.hpp"

namespace orlan::reliability {

inline constexpr std::int64_t maxRetryAttempts = 3;
inline constexpr Duration retryDelay = std::chrono::seconds(5);

/// The attempt that follows a failed one.
struct Retry {
  std::int64_t retryCount;
  Duration delay;

  friend bool operator==(const Retry&, const Retry&) = default;
};

/// What comes after an event with `retryCount` failures behind it failed once more; nothing: it is given up.
[[nodiscard]] std::optional<Retry> afterFailure(std::int64_t retryCount);

/// Higher priority first, then the older.
void sortForProcessing(std::vector<PendingEvent>& events);

/// Pass in which events of a priority are attempted: 0, 1 or 2.
[[nodiscard]] int passOf(EventPriority priority);

}  // namespace orlan::reliability
