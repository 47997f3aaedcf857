#include "tools/orlan/run/Addresses.hpp"

#include "orlan/base/text.hpp"
#include "orlan/platform/Url.hpp"

namespace orlan::run {

namespace {

std::string withoutTrailingSlash(std::string url) {
  while (url.ends_with('/')) url.pop_back();
  return url;
}

/// What stands behind the host in the built-in address of the transmission layer.
std::string transmissionPath(Config::Environment environment) {
  const std::string url = BaseUrls::builtIn().transmissionUrl(environment);
  const auto parts = parseUrl(url);
  return parts ? std::string(parts->path) : "";
}

Error mistake(std::string_view option, const Error& why) {
  return {"orlan run", 2, std::string(option) + ": " + text::escapedControls(why.description)};
}

}  // namespace

Result<BaseUrls> addresses(const RunOptions& options, const std::string& ownBackend) {
  BaseUrls urls = BaseUrls::builtIn();
  const std::string both = withoutTrailingSlash(options.backend.value_or(ownBackend));
  const auto environment = options.environment;
  if (!both.empty()) {
    if (auto set = urls.setPlatform(environment, both); !set)
      return Unexpected(mistake("--backend", set.error()));
    if (auto set = urls.setTransmission(environment, both + transmissionPath(environment)); !set) {
      return Unexpected(mistake("--backend", set.error()));
    }
  }
  if (options.platformUrl) {
    auto set = urls.setPlatform(environment, *options.platformUrl);
    if (!set) return Unexpected(mistake("--platform-url", set.error()));
  }
  if (options.transmissionUrl) {
    auto set = urls.setTransmission(environment, *options.transmissionUrl);
    if (!set) return Unexpected(mistake("--transmission-url", set.error()));
  }
  return urls;
}

}  // namespace orlan::run
