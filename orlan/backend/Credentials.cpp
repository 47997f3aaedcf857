#include "orlan/backend/Credentials.hpp"

namespace orlan {

TransmissionAppCredentials effectiveCredentials(const std::optional<TransmissionAppCredentials>& configured,
                                                const std::string& fallbackKey,
                                                const std::string& bundleIdentifier) {
  if (!configured) return {.companyApiKey = fallbackKey, .iosBundleID = bundleIdentifier};
  auto credentials = *configured;
  if (credentials.companyApiKey.empty()) credentials.companyApiKey = fallbackKey;
  return credentials;
}

}  // namespace orlan
