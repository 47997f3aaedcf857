#pragma once

#include <cstdint>
#include <functional>

#include "orlan/base/Subscription.hpp"

namespace orlan {

/// Whether the application is in front and takes input (active), in front without (inactive, as on the way
/// there or back), or out of sight.
enum class ApplicationState : std::int64_t { active = 0, inactive = 1, background = 2 };

/// What a phone says when that changes, in the order in which it comes: out of sight, on the way back, in
/// front, about to leave.
enum class ApplicationSignal { didEnterBackground, willEnterForeground, didBecomeActive, willResignActive };

/// The host application's life cycle. Main thread.
class Application {
 public:
  virtual ~Application() = default;

  [[nodiscard]] virtual ApplicationState state() const = 0;

  /// Handlers of one signal run in the order of registration, until the handle ends.
  [[nodiscard]] virtual Subscription observe(ApplicationSignal signal, std::function<void()> handler) = 0;

  virtual void registerForRemoteNotifications() = 0;
};

}  // namespace orlan
