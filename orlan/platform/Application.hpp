#pragma once

#include <cstdint>
#include <functional>

#include "orlan/base/Subscription.hpp"

namespace orlan {

enum class ApplicationState : std::int64_t { active = 0, inactive = 1, background = 2 };

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
