#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/orlan/backend/Endpoint.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {

/// What arrived and what was made of it.
struct Exchange {
  std::int64_t id = 0;  // 1, 2, … in order of arrival
  double at = 0.0;      // seconds since the backend was started
  Request request;      // without a method when the bytes were no HTTP request; they are the body
  std::optional<Endpoint> endpoint;
  Problems problems;
  std::vector<std::string> faults;  // those that struck, as they were asked for
  std::optional<int> status;        // of the answer; nothing: none, or none that is HTTP
};

/// One JSON object in one line, without the line break: id, at, method, path, headers (list of [name, value]
/// in order), body or bodyBase64, status (null when there is none), faults, problems. Control characters are
/// escaped, as it may be looked at in a terminal.
[[nodiscard]] std::string recordLine(const Exchange& exchange);

/// "POST /check-geofence 200", with what struck it: one line for a person, control characters escaped.
[[nodiscard]] std::string describe(const Exchange& exchange);

/// "POST /check-geofence: body.distance: missing" for each problem.
[[nodiscard]] std::vector<std::string> complaints(const Exchange& exchange);

}  // namespace orlan::devbackend
