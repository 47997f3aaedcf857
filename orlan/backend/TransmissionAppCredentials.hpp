#pragma once

#include <optional>
#include <string>
#include <vector>

#include "orlan/platform/HttpClient.hpp"

namespace orlan {

/// The app-scoped credentials of the transmission layer.
struct TransmissionAppCredentials {
  std::optional<std::string> companyID;  // carried, never sent
  std::string companyApiKey;
  std::string appID;
  std::optional<std::string> appName;  // carried, never sent
  std::string appApiKey;               // never logged
  std::string iosBundleID;
  bool includeLegacyApiKeyHeader = true;

  /// Whether company key, app id, app key and bundle identifier are all there; without that only the legacy
  /// header is sent.
  [[nodiscard]] bool isComplete() const;

  friend bool operator==(const TransmissionAppCredentials&, const TransmissionAppCredentials&) = default;
};

/// Adds the authentication headers of a transmission layer call, in their order.
void addTransmissionHeaders(HttpRequest& request, const TransmissionAppCredentials& credentials);

}  // namespace orlan
