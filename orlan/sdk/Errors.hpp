#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "orlan/base/Error.hpp"

namespace orlan::errors {

/// A failure of the facade's own making.
[[nodiscard]] inline Error plugin(std::string description, std::int64_t code = -1) {
  return {"OrlanPlugin", code, std::move(description)};
}

/// An operation that needs a start came before it.
[[nodiscard]] inline Error notInitialized() {
  return plugin("SDK not initialized. Call start() first.");
}

[[nodiscard]] inline Error noHostCredentials() {
  return plugin("OrlanConfig.plist is required and must include company_api_key.");
}

// What is wrong with a survey call, in the order in which it is looked at.
[[nodiscard]] inline Error notRegistered() {
  return plugin("Device not registered", -2);
}
[[nodiscard]] inline Error invalidNotificationId() {
  return plugin("Invalid notification ID", -3);
}
[[nodiscard]] inline Error emptyAnswers() {
  return plugin("Empty answers list", -4);
}
[[nodiscard]] inline Error invalidAnswers(std::size_t count) {
  return plugin(std::to_string(count) + " invalid answer(s)", -5);
}

[[nodiscard]] inline Error alreadyInstalled() {
  return plugin(
      "Runtime::install: a phone is installed already; install one at a time, before the first use.");
}

}  // namespace orlan::errors
