#pragma once

#include <optional>
#include <vector>

#include "orlan/campaigns/ReliabilityEvents.hpp"
#include "orlan/platform/KeyValueStore.hpp"

namespace orlan::reliability {

/// Pending and failed events in the phone's store, as JSON arrays in binary values. A list that is missing or
/// damaged is no list.
class EventStore {
 public:
  explicit EventStore(KeyValueStore& store) : store_(store) {}

  void savePending(const std::vector<PendingEvent>& events);
  void saveFailed(const std::vector<FailedEvent>& events);
  [[nodiscard]] std::optional<std::vector<PendingEvent>> pending() const;
  [[nodiscard]] std::optional<std::vector<FailedEvent>> failed() const;

 private:
  KeyValueStore& store_;
};

}  // namespace orlan::reliability
