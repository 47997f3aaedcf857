#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "orlan/base/Result.hpp"

namespace orlan::devbackend {

/// What can be asked of the backend. Registration and push-token sync are one endpoint.
enum class Endpoint {
  registration,
  segments,
  activities,
  pluginActivity,
  surveyResponse,
  configuration,
  geofenceCheck
};

/// The endpoint behind a request's target, exactly as clients form it: the platform's paths have one shape,
/// those of the transmission layer stand behind "", "/api" (staging) or "/api/" (nightly, hence two slashes).
/// Anything else, a query included, is no endpoint.
[[nodiscard]] std::optional<Endpoint> endpointOf(std::string_view target);

/// Reads "PATH=REST", with the path of an endpoint, and takes PATH and "=" off. The error says what is wrong.
[[nodiscard]] Result<Endpoint> takeEndpoint(std::string_view& text);

/// All paths, for messages: "/api/device-registerd/create, /api/segments, …".
[[nodiscard]] std::string knownPaths();

}  // namespace orlan::devbackend
