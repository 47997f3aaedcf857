#include "phones/common/LocationClient.hpp"

#include <utility>

namespace orlan::phone {

namespace {

constexpr double significantChange = 500.0;  // metres

bool isSame(const std::weak_ptr<LocationManagerDelegate>& a,
            const std::weak_ptr<LocationManagerDelegate>& b) {
  return !a.owner_before(b) && !b.owner_before(a);
}

}  // namespace

bool isAuthorized(LocationAuthorization status) {
  return status == LocationAuthorization::authorizedAlways ||
         status == LocationAuthorization::authorizedWhenInUse;
}

void LocationClient::setDelegate(std::weak_ptr<LocationManagerDelegate> delegate) {
  main_.assertCurrent();
  const bool isNew = !isSame(delegate, delegate_);
  delegate_ = std::move(delegate);
  if (!isNew || delegate_.expired()) return;
  main_.async([self = weak_from_this(), asked = delegate_] {
    const auto client = self.lock();
    if (!client || !isSame(asked, client->delegate_)) return;
    if (const auto listener = client->delegate()) listener->didChangeAuthorization(*client);
  });
}

void LocationClient::setUpdating(bool running) {
  if (running && !updating_) sinceUpdate_.restart();
  updating_ = running;
}

void LocationClient::setSignificant(bool running) {
  if (running && !significant_) sinceChange_.restart();
  significant_ = running;
}

bool LocationClient::wants(const Place& here) {
  const bool updated = updating_ && sinceUpdate_.passes(here, distanceFilter_);
  const bool changed = significant_ && sinceChange_.passes(here, significantChange);
  return updated || changed;
}

}  // namespace orlan::phone
