#include "tools/orlan/backend/Endpoint.hpp"

#include <array>

namespace orlan::devbackend {
namespace {

struct Row {
  Endpoint endpoint;
  std::string_view method;
  std::string_view path;
  bool hasPrefixes = false;
};

constexpr std::array rows{
    Row{Endpoint::registration, "POST", "/api/device-registerd/create"},
    Row{Endpoint::segments, "POST", "/api/segments"},
    Row{Endpoint::activities, "POST", "/api/activities"},
    Row{Endpoint::pluginActivity, "POST", "/api/plugin-activity/create"},
    Row{Endpoint::surveyResponse, "POST", "/api/survey-response"},
    Row{Endpoint::configuration, "GET", "/get-config", true},
    Row{Endpoint::geofenceCheck, "POST", "/check-geofence", true},
};

const Row& rowOf(Endpoint endpoint) {
  return rows[static_cast<std::size_t>(endpoint)];
}

}  // namespace

std::optional<Endpoint> endpointOf(std::string_view target) {
  for (const auto& row : rows) {
    if (target == row.path) return row.endpoint;
    if (!row.hasPrefixes || !target.ends_with(row.path)) continue;
    const auto prefix = target.substr(0, target.size() - row.path.size());
    if (prefix == "/api" || prefix == "/api/") return row.endpoint;
  }
  return std::nullopt;
}

std::string_view pathOf(Endpoint endpoint) {
  return rowOf(endpoint).path;
}

std::string_view methodOf(Endpoint endpoint) {
  return rowOf(endpoint).method;
}

std::string knownPaths() {
  std::string list;
  for (const auto& row : rows) {
    if (!list.empty()) list += ", ";
    list += row.path;
  }
  return list;
}

}  // namespace orlan::devbackend
