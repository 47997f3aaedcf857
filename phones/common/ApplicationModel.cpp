#include "phones/common/ApplicationModel.hpp"

#include <cstddef>
#include <utility>

namespace orlan::phone {

ApplicationModel::ApplicationModel(MainLoop& main, PhoneObserver& observer, ApplicationState initial)
    : main_(main), observer_(observer), state_(initial) {}

Subscription ApplicationModel::observe(ApplicationSignal signal, std::function<void()> handler) {
  main_.assertCurrent();
  return signals_[static_cast<std::size_t>(signal)].subscribe(
      [handler = std::move(handler)](const ApplicationSignal&) { handler(); });
}

void ApplicationModel::registerForRemoteNotifications() {
  main_.assertCurrent();
  observer_.remoteRegistration();
}

void ApplicationModel::moveTo(ApplicationState state) {
  main_.assertCurrent();
  if (state == state_) return;
  if (state_ == ApplicationState::active) {
    state_ = ApplicationState::inactive;
    raise(ApplicationSignal::willResignActive);
  } else if (state_ == ApplicationState::background) {
    raise(ApplicationSignal::willEnterForeground);
  }
  state_ = state;
  if (state == ApplicationState::background) raise(ApplicationSignal::didEnterBackground);
  if (state == ApplicationState::active) raise(ApplicationSignal::didBecomeActive);
}

void ApplicationModel::raise(ApplicationSignal signal) {
  main_.assertCurrent();
  observer_.applicationSignal(signal, state_);
  signals_[static_cast<std::size_t>(signal)].send(signal);
}

void ApplicationModel::restart(ApplicationState state) {
  main_.assertCurrent();
  state_ = state;
  signals_ = {};
}

}  // namespace orlan::phone
