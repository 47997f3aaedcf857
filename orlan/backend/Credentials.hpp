#pragma once

#include <optional>
#include <string>

#include "orlan/backend/TransmissionAppCredentials.hpp"

namespace orlan {

/// What a transmission layer call is made with: the configured set with `fallbackKey` in the place of an
/// empty company key, or a set that only carries `fallbackKey` in the legacy header.
[[nodiscard]] TransmissionAppCredentials effectiveCredentials(
    const std::optional<TransmissionAppCredentials>& configured, const std::string& fallbackKey,
    const std::string& bundleIdentifier);

}  // namespace orlan
