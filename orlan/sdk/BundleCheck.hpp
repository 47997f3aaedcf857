#pragma once

#include <optional>
#include <string>

#include "orlan/backend/TransmissionAppCredentials.hpp"
#include "orlan/base/Result.hpp"

namespace orlan {

/// Whether app-scoped credentials belong to this host application. Only a complete set is checked: its bundle
/// identifier must equal the host's, white space around either aside, letter case included.
[[nodiscard]] Result<void> checkBundle(const std::optional<TransmissionAppCredentials>& credentials,
                                       const std::optional<std::string>& bundleIdentifier);

}  // namespace orlan
