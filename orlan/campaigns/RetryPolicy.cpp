#include "orlan/campaigns/RetryPolicy.hpp"

#include <algorithm>

namespace orlan::reliability {

std::optional<Retry> afterFailure(std::int64_t retryCount) {
  if (retryCount >= maxRetryAttempts - 1) return std::nullopt;  // first: a damaged store may hold any number
  const std::int64_t failures = retryCount + 1;
  return Retry{failures, std::max<std::int64_t>(failures, 0) * retryDelay};
}

void sortForProcessing(std::vector<PendingEvent>& events) {
  std::stable_sort(events.begin(), events.end(), [](const PendingEvent& a, const PendingEvent& b) {
    if (a.priority != b.priority) return rawValue(a.priority) > rawValue(b.priority);
    return a.timestamp < b.timestamp;
  });
}

int passOf(EventPriority priority) {
  switch (priority) {
    case EventPriority::critical:
    case EventPriority::high:
      return 0;
    case EventPriority::normal:
      return 1;
    case EventPriority::low:
      break;
  }
  return 2;
}

}  // namespace orlan::reliability
