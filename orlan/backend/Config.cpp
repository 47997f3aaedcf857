#include "orlan/backend/Config.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "orlan/backend/Errors.hpp"
#include "orlan/base/ascii.hpp"
#include "orlan/base/text.hpp"

namespace orlan {
namespace {

using Environment = Config::Environment;

std::size_t index(Environment environment) {
  return static_cast<std::size_t>(environment);
}

/// What stands behind the host in each transmission layer address. The paths of the calls begin with a slash
/// of their own, so nightly's calls have two in a row; its server wants them so.
constexpr std::array<std::string_view, 4> kTransmissionPaths{"", "/api/", "/api", ""};

bool isLetterOrDigit(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || ascii::isDigit(c);
}

/// Labels of letters, digits, hyphens and underscores between single dots; a number address is one too.
bool isHostName(std::string_view host) {
  bool inLabel = false;
  for (const char c : host) {
    if (c == '.' && !inLabel) return false;
    if (c != '.' && c != '-' && c != '_' && !isLetterOrDigit(c)) return false;
    inLabel = c != '.';
  }
  return inLabel;
}

/// "[::1]": brackets around hexadecimal digits, colons and dots.
bool isBracketedAddress(std::string_view host) {
  if (host.size() < 4 || host.front() != '[' || host.back() != ']') return false;
  const auto inside = host.substr(1, host.size() - 2);
  return std::count(inside.begin(), inside.end(), ':') >= 2 &&
         inside.find_first_not_of("0123456789abcdefABCDEF:.") == std::string_view::npos;
}

bool isPort(std::string_view digits) {
  const auto port = text::toInteger(digits);
  return port && std::all_of(digits.begin(), digits.end(), ascii::isDigit) && *port >= 1 && *port <= 65535;
}

bool isHostWithPort(std::string_view text) {
  const auto end = text.starts_with('[') ? text.find(']') + 1 : text.find(':');
  if (end < text.size()) {
    if (text[end] != ':' || !isPort(text.substr(end + 1))) return false;
    text = text.substr(0, end);
  }
  return isHostName(text) || isBracketedAddress(text);
}

/// Scheme, host and perhaps a port, then exactly `path`: no user, query or fragment, which paths put behind
/// would end up in.
bool isBaseUrl(std::string_view url, std::string_view path) {
  for (const std::string_view scheme : {"https://", "http://"}) {
    if (!url.starts_with(scheme)) continue;
    const auto rest = url.substr(scheme.size());
    const auto slash = std::min(rest.find('/'), rest.size());
    return rest.substr(slash) == path && isHostWithPort(rest.substr(0, slash));
  }
  return false;
}

Result<void> put(std::string& place, std::string url, std::string_view path) {
  if (!isBaseUrl(url, path)) {
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
  return {
      {"https://platform.development.orlan.example", "https://platform.nightly.orlan.example",
       "https://platform.staging.orlan.example", "https://platform.orlan.example"},
      {"https://transmission.development.orlan.example", "https://transmission.nightly.orlan.example/api/",
       "https://transmission.staging.orlan.example/api", "https://transmission.orlan.example"}};
}

Result<void> BaseUrls::setPlatform(Environment environment, std::string url) {
  return put(platform[index(environment)], std::move(url), "");
}

Result<void> BaseUrls::setTransmission(Environment environment, std::string url) {
  return put(transmission[index(environment)], std::move(url), kTransmissionPaths[index(environment)]);
}

const std::string& BaseUrls::platformUrl(Environment environment) const {
  return platform[index(environment)];
}

const std::string& BaseUrls::transmissionUrl(Environment environment) const {
  return transmission[index(environment)];
}

}  // namespace orlan
