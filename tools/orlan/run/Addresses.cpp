#include "tools/orlan/run/Addresses.hpp"

#include "orlan/platform/Url.hpp"

namespace orlan::run {

namespace {

/// What stands behind the host in the built-in address of the transmission layer.
std::string transmissionPath(Config::Environment environment) {
  const std::string url = BaseUrls::builtIn().transmissionUrl(environment);
  const auto parts = parseUrl(url);
  return parts ? std::string(parts->path) : "";
}

}  // namespace

Result<BaseUrls> addresses(const RunOptions& options, const std::string& ownBackend) {
  BaseUrls urls = BaseUrls::builtIn();
  const auto environment = options.environment;
  Result<void> outcome;
  const auto check = [&](std::string_view option, const Result<void>& set) {
    if (set || !outcome) return;
    outcome = Unexpected(Error{"orlan run", 2, std::string(option) + ": " + set.error().description});
  };
  std::string both = options.backend.value_or(ownBackend);
  while (both.ends_with('/')) both.pop_back();
  if (!both.empty()) {
    check("--backend", urls.setPlatform(environment, both));
    check("--backend", urls.setTransmission(environment, both + transmissionPath(environment)));
  }
  if (options.platformUrl) check("--platform-url", urls.setPlatform(environment, *options.platformUrl));
  if (options.transmissionUrl) {
    check("--transmission-url", urls.setTransmission(environment, *options.transmissionUrl));
  }
  if (!outcome) return Unexpected(outcome.error());
  return urls;
}

}  // namespace orlan::run
