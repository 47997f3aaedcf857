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

AppStateMonitoring::AppStateMonitoring(const Services& services, std::function<void()> afterTransition)
    : with_(services), afterTransition_(std::move(afterTransition)), appLaunchTime_(services.clock.now()) {}

Duration AppStateMonitoring::sinceLaunch() const {
  return with_.clock.now() - appLaunchTime_;
}

std::string AppStateMonitoring::launchSeconds() const {
  return text::fixed(seconds(sinceLaunch()), 1) + "s";
}

void AppStateMonitoring::setUp() {
  removeObservers();
  with_.logger.breadcrumb("🔧 Setting up app state monitoring");
  appLaunchTime_ = with_.clock.now();
  lastAppState_ = with_.application.state();
  with_.logger.breadcrumb(fmt::format("📱 Initial app state: {}", nameOf(lastAppState_)));

  const auto observe = [this](ApplicationSignal signal, std::function<void()> handler) {
    observers_.add(with_.application.observe(signal, std::move(handler)));
  };
  observe(ApplicationSignal::didEnterBackground, [this] { enteredBackground(); });
  observe(ApplicationSignal::willEnterForeground, [this] { entersForeground(); });
  observe(ApplicationSignal::didBecomeActive, [this] {
    with_.logger.breadcrumb(
        fmt::format("📱 App became ACTIVE (visible and receiving events) - {} since launch", launchSeconds()));
  });
  observe(ApplicationSignal::willResignActive, [this] {
    with_.logger.breadcrumb(
        fmt::format("📱 App will resign ACTIVE (about to lose focus) - {} since launch", launchSeconds()));
  });
  with_.logger.breadcrumb("🔧 App state monitoring configured - tracking 4 state events");
}

void AppStateMonitoring::enteredBackground() {
  logTransition(ApplicationState::background, "BG");
  with_.logger.breadcrumb("📱 Stopping foreground monitor");
  with_.foreground->stop();
  with_.logger.breadcrumb("📱 Resuming background monitor");
  with_.background->resumeMonitoring();
  with_.logger.breadcrumb("📱 Background mode active - only BG notifications will fire");
  afterTransition_();
}

void AppStateMonitoring::entersForeground() {
  logTransition(ApplicationState::active, "FG");
  with_.logger.breadcrumb("📱 Starting foreground monitor");
  with_.foreground->start(with_.locations.makeManager("host"));
  with_.logger.breadcrumb("📱 Pausing background monitor");
  with_.background->pauseMonitoring();
  with_.logger.breadcrumb("📱 Foreground mode active - only FG notifications will fire");
  afterTransition_();
}

/// Counts the change and opens its report; the caller goes on from there.
void AppStateMonitoring::logTransition(ApplicationState next, std::string_view monitor) {
  const std::string_view previous = nameOf(std::exchange(lastAppState_, next));
  ++appStateTransitionCount_;
  const std::string_view mode = next == ApplicationState::active ? "FOREGROUND" : "BACKGROUND";
  const std::string elapsed = launchSeconds();
  with_.logger.breadcrumb(separator);
  with_.logger.breadcrumb(fmt::format("📱 App ENTERED {} - Switching to {} mode", mode, monitor));
  with_.logger.breadcrumb(separator);
  with_.logger.breadcrumb(fmt::format("📱 Transition #{}: {} → {}", appStateTransitionCount_, previous, mode));
  with_.logger.breadcrumb(fmt::format("📱 Time since launch: {}", elapsed));
}

}  // namespace orlan
