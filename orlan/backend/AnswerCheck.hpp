#pragma once

#include "orlan/base/Result.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/HttpClient.hpp"

namespace orlan {

/// Whether a segments update or a configuration fetch was answered with success; logs the status, or what is
/// wrong.
[[nodiscard]] Result<void> checkAnswer(const Result<HttpReply>& reply, Logger& logger);

/// Logs an error by its description and hands it back, for `return Unexpected(logged(…))`.
[[nodiscard]] Error logged(Error error, Logger& logger);

}  // namespace orlan
