#pragma once

#include <string>

#include "orlan/base/Error.hpp"

namespace orlan::errors {

/// A failure of the facade's own making.
[[nodiscard]] inline Error plugin(std::string description) {
  return {"OrlanPlugin", -1, std::move(description)};
}

[[nodiscard]] inline Error noHostCredentials() {
  return plugin("OrlanConfig.plist is required and must include company_api_key.");
}

[[nodiscard]] inline Error alreadyInstalled() {
  return plugin(
      "Runtime::install: a phone is installed already; install one at a time, before the first use.");
}

}  // namespace orlan::errors
