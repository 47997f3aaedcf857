#pragma once

#include <optional>

#include "orlan/platform/HttpClient.hpp"

/// What every phone's HTTP client refuses, said once.
namespace orlan::phone {

/// Why `request` must not be sent: a URL that is not secure (`isSecureUrl`; `urlErrors::badURL`), or a method
/// or header that would not stay within its line on the wire (`urlErrors::other`). Nothing when it may.
[[nodiscard]] std::optional<Error> refusal(const HttpRequest& request);

}  // namespace orlan::phone
