#include "orlan/sdk/BundleCheck.hpp"

#include "orlan/base/text.hpp"
#include "orlan/sdk/Errors.hpp"

namespace orlan {

Result<void> checkBundle(const std::optional<TransmissionAppCredentials>& credentials,
                         const std::optional<std::string>& bundleIdentifier) {
  if (!credentials || !credentials->isComplete()) return {};
  const std::string configured(text::trimmed(credentials->iosBundleID));
  const std::string given = bundleIdentifier.value_or("");
  const std::string actual(text::trimmed(given));
  if (configured.empty()) {
    return Unexpected(errors::plugin("OrlanConfig is missing ios_bundle_id for app-scoped credentials."));
  }
  if (actual.empty()) return Unexpected(errors::plugin("Unable to read host app bundle identifier."));
  if (configured == actual) return {};
  return Unexpected(errors::plugin("OrlanConfig ios_bundle_id mismatch. Configured=" + configured +
                                   ", Actual=" + actual + "."));
}

}  // namespace orlan
