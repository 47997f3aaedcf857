#include "orlan/sdk/AppStateMonitoring.hpp"

#include <fmt/format.h>

#include <utility>

#include "orlan/base/text.hpp"

namespace orlan {
namespace {

constexpr std::string_view separator = "📱 ═══════════════════════════════════════════════";

std::string_view nameOf(ApplicationState state) {
  switch (state) {
    case ApplicationState::active:
      return "ACTIVE";
    case ApplicationState::inactive:
      return "INACTIVE";
    case ApplicationState::background:
      return "BACKGROUND";
  }
  return "UNKNOWN";
}

}  // namespace

AppStateMonitoring::AppStateMonitoring(const Platform& phone, OrlanServices& services,
                                       std::function<void()> afterTransition)
    : phone_(phone),
      services_(services),
      logger_(services.logger),
      afterTransition_(std::move(afterTransition)),
      appLaunchTime_(phone.clock.now()) {}

Duration AppStateMonitoring::sinceLaunch() const {
  return phone_.clock.now() - appLaunchTime_;
}

std::string AppStateMonitoring::launchSeconds() const {
  return text::fixed(seconds(sinceLaunch()), 1) + "s";
}

void AppStateMonitoring::setUpAppStateMonitoring() {
  removeAppStateObservers();
  logger_.breadcrumb("🔧 Setting up app state monitoring");
  appLaunchTime_ = phone_.clock.now();
  lastAppState_ = phone_.application.state();
  logger_.breadcrumb(fmt::format("📱 Initial app state: {}", nameOf(lastAppState_)));

  const auto observe = [this](ApplicationSignal signal, std::function<void()> handler) {
    appStateObservers_.add(phone_.application.observe(signal, std::move(handler)));
  };
  observe(ApplicationSignal::didEnterBackground, [this] { enteredBackground(); });
  observe(ApplicationSignal::willEnterForeground, [this] { entersForeground(); });
  observe(ApplicationSignal::didBecomeActive, [this] {
    logger_.breadcrumb(
        fmt::format("📱 App became ACTIVE (visible and receiving events) - {} since launch", launchSeconds()));
  });
  observe(ApplicationSignal::willResignActive, [this] {
    logger_.breadcrumb(
        fmt::format("📱 App will resign ACTIVE (about to lose focus) - {} since launch", launchSeconds()));
  });
  logger_.breadcrumb("🔧 App state monitoring configured - tracking 4 state events");
}

void AppStateMonitoring::enteredBackground() {
  logTransition(ApplicationState::background, "BG");
  logger_.breadcrumb("📱 Stopping foreground monitor");
  services_.foregroundMonitor->stop();
  logger_.breadcrumb("📱 Resuming background monitor");
  services_.backgroundMonitor->resumeMonitoring();
  logger_.breadcrumb("📱 Background mode active - only BG notifications will fire");
  afterTransition_();
}

void AppStateMonitoring::entersForeground() {
  logTransition(ApplicationState::active, "FG");
  logger_.breadcrumb("📱 Starting foreground monitor");
  services_.foregroundMonitor->start(phone_.locations.makeManager("host"));
  logger_.breadcrumb("📱 Pausing background monitor");
  services_.backgroundMonitor->pauseMonitoring();
  logger_.breadcrumb("📱 Foreground mode active - only FG notifications will fire");
  afterTransition_();
}

/// Counts the change and opens its report; the caller goes on from there.
void AppStateMonitoring::logTransition(ApplicationState next, std::string_view monitor) {
  const std::string_view previous = nameOf(std::exchange(lastAppState_, next));
  ++appStateTransitionCount_;
  const std::string_view mode = next == ApplicationState::active ? "FOREGROUND" : "BACKGROUND";
  const std::string elapsed = launchSeconds();
  logger_.breadcrumb(separator);
  logger_.breadcrumb(fmt::format("📱 App ENTERED {} - Switching to {} mode", mode, monitor));
  logger_.breadcrumb(separator);
  logger_.breadcrumb(fmt::format("📱 Transition #{}: {} → {}", appStateTransitionCount_, previous, mode));
  logger_.breadcrumb(fmt::format("📱 Time since launch: {}", elapsed));
}

}  // namespace orlan
