#pragma once

#include "orlan/backend/Config.hpp"
#include "orlan/base/Result.hpp"
#include "tools/orlan/run/RunOptions.hpp"

namespace orlan::run {

/// The base URLs for a run: what the options name, else `ownBackend` for both families. An address for both
/// families gets the path that the transmission layer has in the chosen environment. The error names the
/// option.
[[nodiscard]] Result<BaseUrls> addresses(const RunOptions& options, const std::string& ownBackend);

}  // namespace orlan::run
