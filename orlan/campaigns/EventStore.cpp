#include "orlan/campaigns/EventStore.hpp"

#include <string_view>
#include <utility>

namespace orlan::reliability {

namespace {

constexpr std::string_view pendingKey = "Orlan_PendingEvents";
constexpr std::string_view failedKey = "Orlan_FailedEvents";

template <class Event>
std::optional<std::vector<Event>> load(const KeyValueStore& store, std::string_view key) {
  const auto bytes = store.bytes(key);
  if (!bytes) return std::nullopt;
  auto events = json::decodeText<std::vector<Event>>(*bytes);
  if (!events) return std::nullopt;
  return std::move(*events);
}

}  // namespace

void EventStore::savePending(const std::vector<PendingEvent>& events) {
  store_.set(pendingKey, Bytes{json::encodeText(events)});
}

void EventStore::saveFailed(const std::vector<FailedEvent>& events) {
  store_.set(failedKey, Bytes{json::encodeText(events)});
}

std::optional<std::vector<PendingEvent>> EventStore::pending() const {
  return load<PendingEvent>(store_, pendingKey);
}

std::optional<std::vector<FailedEvent>> EventStore::failed() const {
  return load<FailedEvent>(store_, failedKey);
}

}  // namespace orlan::reliability
