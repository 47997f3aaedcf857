#include "orlan/geofence/CooldownStore.hpp"

#include "orlan/base/json.hpp"

namespace orlan {
namespace {

json::Value stored(TimePoint time) {
  return Bytes{json::print(secondsSince2001(time))};
}

std::optional<TimePoint> timeAt(const KeyValueStore& store, std::string_view key) {
  const auto text = store.bytes(key);
  if (!text) return std::nullopt;
  const auto value = json::parse(*text);
  const auto number = value ? value->number() : std::nullopt;
  if (!number) return std::nullopt;
  return fromSecondsSince2001(*number);
}

}  // namespace

std::string cooldownKeys::lastNotification(std::int64_t campaignId, std::string_view activation) {
  return std::string(lastNotificationPrefix) + std::to_string(campaignId) + "_" + std::string(activation);
}

std::optional<TimePoint> CooldownStore::appStartTime() const {
  return timeAt(store_, cooldownKeys::appStartTime);
}

void CooldownStore::setAppStartTime(TimePoint time) {
  store_.set(cooldownKeys::appStartTime, stored(time));
}

std::optional<TimePoint> CooldownStore::lastNotification(std::int64_t campaignId,
                                                         std::string_view activation) const {
  return timeAt(store_, cooldownKeys::lastNotification(campaignId, activation));
}

void CooldownStore::setLastNotification(std::int64_t campaignId, std::string_view activation,
                                        TimePoint time) {
  store_.set(cooldownKeys::lastNotification(campaignId, activation), stored(time));
}

void CooldownStore::removeLastNotification(std::int64_t campaignId, std::string_view activation) {
  store_.remove(cooldownKeys::lastNotification(campaignId, activation));
}

void CooldownStore::clear() {
  for (const auto& [key, value] : store_.contents()) {
    if (key.starts_with(cooldownKeys::lastNotificationPrefix)) store_.remove(key);
  }
}

}  // namespace orlan
