#pragma once

#include <cstddef>
#include <functional>
#include <optional>

#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/OrlanServices.hpp"
#include "phones/common/ApplicationModel.hpp"
#include "phones/common/LocalNotificationCenter.hpp"
#include "phones/common/LocationHub.hpp"
#include "tools/orlan/simulate/valueForms.hpp"

namespace orlan::simulate {

/// What a step acts on that a person can take with any phone of ours, or the host for them.
class Scene {
 public:
  [[nodiscard]] virtual phone::ApplicationModel& application() = 0;
  [[nodiscard]] virtual phone::LocationHub& locations() = 0;
  [[nodiscard]] virtual phone::LocalNotificationCenter& notifications() = 0;
  [[nodiscard]] virtual OrlanServices& services() = 0;
  [[nodiscard]] OrlanPlugin& plugin() { return *services().plugin; }

  /// Of what the library scheduled so far, the one with this number, from 0. Whoever finds none says so.
  [[nodiscard]] virtual std::optional<NotificationRequest> scheduled(std::size_t number) = 0;

  virtual void tap(const NotificationResponse& response) { notifications().tap(response); }

  /// Hears of the outcome of the step that is performed, which may be long after it.
  using Outcome = std::function<void(const Result<json::Value>&)>;
  [[nodiscard]] virtual Outcome outcome() = 0;

  template <class T>
  [[nodiscard]] Completion<T> completion() {
    return [tell = outcome()](const Result<T>& result) {
      tell(result ? Result<json::Value>(formOf(*result)) : Unexpected(result.error()));
    };
  }

 protected:
  ~Scene() = default;
};

}  // namespace orlan::simulate
