#pragma once

#include <array>

#include "orlan/base/Subject.hpp"
#include "orlan/platform/Application.hpp"
#include "orlan/platform/SerialQueue.hpp"
#include "phones/common/PhoneObserver.hpp"

namespace orlan::phone {

/// The host application's life cycle as a phone drives it. Main thread; handlers run inside the call.
class ApplicationModel final : public Application {
 public:
  ApplicationModel(MainLoop& main, PhoneObserver& observer, ApplicationState initial);

  [[nodiscard]] ApplicationState state() const override { return state_; }
  [[nodiscard]] Subscription observe(ApplicationSignal signal, std::function<void()> handler) override;
  void registerForRemoteNotifications() override;

  /// Goes to `state` the way a phone does, raising what lies on the way. To the state it is in: nothing.
  ///
  ///     leaving active       willResignActive    (state is inactive)
  ///     entering background  didEnterBackground  (state is background)
  ///     leaving background   willEnterForeground (state is still background)
  ///     entering active      didBecomeActive     (state is active)
  void moveTo(ApplicationState state);

  /// Raises one signal alone; the state stays as it is.
  void raise(ApplicationSignal signal);

  /// The process ends: its handlers are forgotten, and the next one starts in `state` without a signal.
  void restart(ApplicationState state);

 private:
  MainLoop& main_;
  PhoneObserver& observer_;
  ApplicationState state_;
  std::array<Subject<ApplicationSignal>, 4> signals_;  // by ApplicationSignal
};

}  // namespace orlan::phone
