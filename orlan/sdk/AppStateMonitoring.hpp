#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "orlan/base/Subscription.hpp"
#include "orlan/base/Time.hpp"
#include "orlan/platform/Platform.hpp"
#include "orlan/sdk/OrlanServices.hpp"

namespace orlan {

/// Lets exactly one of the two monitors react: the foreground monitor while the application is in front, the
/// background monitor while it is not. Main thread.
class AppStateMonitoring {
 public:
  /// `afterTransition` runs at the end of each change between foreground and background.
  AppStateMonitoring(const Platform& phone, OrlanServices& services, std::function<void()> afterTransition);

  /// Observes the life cycle from now on, in place of any observation before; the session begins anew.
  void setUpAppStateMonitoring();
  void removeAppStateObservers() { appStateObservers_ = {}; }

  /// Changes between foreground and background seen since the process began.
  [[nodiscard]] std::int64_t transitionCount() const { return appStateTransitionCount_; }

  /// Since the latest successful start, by the wall clock.
  [[nodiscard]] Duration sinceLaunch() const;

 private:
  void enteredBackground();
  void entersForeground();
  void logTransition(ApplicationState next, std::string_view monitor);
  [[nodiscard]] std::string launchSeconds() const;

  Platform phone_;
  OrlanServices& services_;
  Logger& logger_;
  std::function<void()> afterTransition_;
  std::int64_t appStateTransitionCount_ = 0;
  ApplicationState lastAppState_ = ApplicationState::active;
  TimePoint appLaunchTime_;
  SubscriptionBag appStateObservers_;
};

}  // namespace orlan
