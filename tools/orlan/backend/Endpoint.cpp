#include "tools/orlan/backend/Endpoint.hpp"

#include <fmt/format.h>

#include "tools/orlan/backend/Formats.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {

std::optional<Endpoint> endpointOf(std::string_view target) {
  for (const auto& format : formats()) {
    if (!target.ends_with(format.path)) continue;
    const auto prefix = target.substr(0, target.size() - format.path.size());
    const bool isKnown = format.isTransmission && (prefix == "/api" || prefix == "/api/");
    if (prefix.empty() || isKnown) return format.endpoint;
  }
  return std::nullopt;
}

Result<Endpoint> takeEndpoint(std::string_view& text) {
  const auto refused = [&](std::string why) {
    return Unexpected(Error{"orlan backend", -1, std::move(why)});
  };
  const auto equals = text.find('=');
  if (equals == std::string_view::npos) return refused("there is no \"=\" behind the path");
  const auto path = text.substr(0, equals);
  const auto endpoint = endpointOf(path);
  if (!endpoint)
    return refused(fmt::format("no such endpoint {}; there are {}", excerpt(path), knownPaths()));
  text.remove_prefix(equals + 1);
  return *endpoint;
}

std::string knownPaths() {
  std::string list;
  for (const auto& format : formats()) {
    if (!list.empty()) list += ", ";
    list += format.path;
  }
  return list;
}

}  // namespace orlan::devbackend
