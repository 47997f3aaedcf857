#include "orlan/backend/Config.hpp"

#include <cstddef>
#include <utility>

#include "orlan/backend/Errors.hpp"
#include "orlan/platform/Url.hpp"

namespace orlan {
namespace {

using namespace std::string_view_literals;
using Environment = Config::Environment;

std::size_t index(Environment environment) {
  return static_cast<std::size_t>(environment);
}

/// What stands behind the host in each transmission layer address. The paths of the calls begin with a slash
/// of their own, so nightly's calls have two in a row; its server wants them so.
constexpr std::array kTransmissionPaths{""sv, "/api/"sv, "/api"sv, ""sv};

Result<void> put(std::string& place, std::string url, std::string_view path) {
  if (!isSecureUrl(url) || parseUrl(url)->path != path) {
    return Unexpected(backendErrors::unusableBaseUrl(url, "https://HOST[:PORT]" + std::string(path)));
  }
  place = std::move(url);
  return {};
}

}  // namespace

Environment environmentFromBridged(std::int64_t raw) {
  switch (fromRawValue<OrlanEnvironment>(raw).value_or(OrlanEnvironment::staging)) {
    case OrlanEnvironment::development:
      return Environment::development;
    case OrlanEnvironment::production:
      return Environment::production;
    case OrlanEnvironment::nightly:
      return Environment::nightly;
    case OrlanEnvironment::staging:
      break;
  }
  return Environment::staging;
}

BaseUrls BaseUrls::builtIn() {
  return {};
}

Result<void> BaseUrls::setPlatform(Environment environment, std::string url) {
  return put(platform_[index(environment)], std::move(url), "");
}

Result<void> BaseUrls::setTransmission(Environment environment, std::string url) {
  return put(transmission_[index(environment)], std::move(url), kTransmissionPaths[index(environment)]);
}

const std::string& BaseUrls::platformUrl(Environment environment) const {
  return platform_[index(environment)];
}

const std::string& BaseUrls::transmissionUrl(Environment environment) const {
  return transmission_[index(environment)];
}

}  // namespace orlan
