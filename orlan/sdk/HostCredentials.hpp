#pragma once

#include <optional>
#include <string>

#include "orlan/backend/TransmissionAppCredentials.hpp"
#include "orlan/base/json.hpp"

namespace orlan {

/// The credentials in the content of OrlanConfig.plist, or nothing when it names no company API key.
/// Each field has several accepted spellings, tried in order; the first with a text that is not blank wins.
/// With a dictionary under "transmission" only that dictionary counts. The host's own `bundleIdentifier`
/// stands in for a missing one.
[[nodiscard]] std::optional<TransmissionAppCredentials> hostCredentials(
    const json::Object& propertyList, const std::optional<std::string>& bundleIdentifier);

}  // namespace orlan
