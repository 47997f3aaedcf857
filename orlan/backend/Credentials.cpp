#include "orlan/backend/Credentials.hpp"

#include <fmt/core.h>

#include "orlan/backend/APIService.hpp"
#include "orlan/backend/StoreKeys.hpp"

namespace orlan {

TransmissionAppCredentials effectiveCredentials(const std::optional<TransmissionAppCredentials>& configured,
                                                const std::string& fallbackKey,
                                                const std::string& bundleIdentifier) {
  if (!configured) return {.companyApiKey = fallbackKey, .iosBundleID = bundleIdentifier};
  auto credentials = *configured;
  if (credentials.companyApiKey.empty()) credentials.companyApiKey = fallbackKey;
  return credentials;
}

void resetCredentialsIfKeyChanged(KeyValueStore& store, Logger& logger, const std::string& newKey) {
  const auto oldKey = store.string(storeKeys::apiKey);
  if (!oldKey || *oldKey == newKey) return;
  for (const auto* key : {storeKeys::deviceID, storeKeys::orlanID, storeKeys::deviceRegistered,
                          storeKeys::apiKey, storeKeys::lastSyncedToken, storeKeys::environment}) {
    store.remove(key);
  }
  logger.warn(fmt::format("• Cleared cached Orlan credentials (old key {} ≠ new key {})", *oldKey, newKey));
}

}  // namespace orlan
