#include "orlan/backend/TransmissionAppCredentials.hpp"

namespace orlan {

bool TransmissionAppCredentials::isComplete() const {
  return !companyApiKey.empty() && !appID.empty() && !appApiKey.empty() && !iosBundleID.empty();
}

void addTransmissionHeaders(HttpRequest& request, const TransmissionAppCredentials& credentials) {
  const bool complete = credentials.isComplete();
  if (complete) {
    request.addHeader("x-company-api-key", credentials.companyApiKey);
    request.addHeader("x-app-id", credentials.appID);
    request.addHeader("x-app-api-key", credentials.appApiKey);
    request.addHeader("x-app-identifier", credentials.iosBundleID);
    request.addHeader("x-platform", "ios");
  }
  if (!complete || credentials.includeLegacyApiKeyHeader) {
    request.addHeader("x-api-key", credentials.companyApiKey);
  }
}

}  // namespace orlan
