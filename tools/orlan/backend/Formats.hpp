#pragma once

#include <span>

#include "tools/orlan/backend/Endpoint.hpp"
#include "tools/orlan/backend/Field.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {

/// What a request to an endpoint looks like.
struct Format {
  Endpoint endpoint;
  std::string_view method;
  std::string_view path;
  bool isTransmission;             // of that layer, which has keys and addresses of its own
  std::span<const Field> headers;  // those in front of the keys, in their order
  void (*checkBody)(const Request& request, Problems& problems);
};

/// All, in the order of `Endpoint`. They know nothing of the library that sends: a mistake there must not
/// repeat itself here.
[[nodiscard]] std::span<const Format> formats();
[[nodiscard]] const Format& formatOf(Endpoint endpoint);

}  // namespace orlan::devbackend
