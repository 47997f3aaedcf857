#pragma once

#include <optional>

#include "tools/orlan/backend/Endpoint.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {

/// What the backend makes of a request on its own, without memory of others.
struct Verdict {
  std::optional<Endpoint> endpoint;  // nothing: the target is none of ours
  int status = 200;                  // 404, 405, 401 (no key), 400 (anything else that is wrong)
  Problems problems;
};

/// Pure: the same request always gets the same verdict.
[[nodiscard]] Verdict judge(const Request& request);

}  // namespace orlan::devbackend
