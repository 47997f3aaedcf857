#include "phones/common/LocationHubManager.hpp"

namespace orlan::phone {

namespace {

constexpr double significantChange = 500.0;  // metres

bool isSame(const std::weak_ptr<LocationManagerDelegate>& a,
            const std::weak_ptr<LocationManagerDelegate>& b) {
  return !a.owner_before(b) && !b.owner_before(a);
}

}  // namespace

void LocationHub::Manager::setDelegate(std::weak_ptr<LocationManagerDelegate> delegate) {
  hub_.main_.assertCurrent();
  const bool isNew = !isSame(delegate, delegate_);
  delegate_ = std::move(delegate);
  if (!isNew || delegate_.expired()) return;
  hub_.main_.async([self = weak_from_this(), asked = delegate_] {
    const auto manager = self.lock();
    if (!manager || !isSame(asked, manager->delegate_)) return;
    if (const auto listener = manager->delegate()) listener->didChangeAuthorization(*manager);
  });
}

void LocationHub::Manager::setUpdating(bool running) {
  hub_.main_.assertCurrent();
  if (running && !updating_) sinceUpdate_.restart();
  updating_ = running;
  hub_.observer_.locationUpdates(name_, running, desiredAccuracy_, distanceFilter_);
}

void LocationHub::Manager::setSignificant(bool running) {
  hub_.main_.assertCurrent();
  if (running && !significant_) sinceChange_.restart();
  significant_ = running;
  hub_.observer_.significantChanges(name_, running);
}

void LocationHub::Manager::take(std::span<const Location> batch, const Place& here) {
  const auto listener = delegate();
  if (!listener) return;
  const bool updated = updating_ && sinceUpdate_.passes(here, distanceFilter_);
  const bool changed = significant_ && sinceChange_.passes(here, significantChange);
  if (updated || changed) listener->didUpdateLocations(*this, batch);
}

}  // namespace orlan::phone
