#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "tools/orlan/backend/Endpoint.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {

/// A header that an operation sends. Without a value any value will do.
struct ExpectedHeader {
  std::string_view name;
  std::optional<std::string_view> value = std::nullopt;
};

/// The headers of an endpoint's request in the order in which a client adds them. On the transmission layer
/// they depend on the authentication scheme, told by whether any app-scoped header is there.
[[nodiscard]] std::vector<ExpectedHeader> expectedHeaders(Endpoint endpoint, const Request& request);

/// Each expected header once, spelled and valued so, in that order; nothing beside them but what transport
/// brings along (host, length, connection, user agent, accepted encodings and languages).
void checkHeaders(const Request& request, const std::vector<ExpectedHeader>& expected, Problems& problems);

/// What the key headers say of each other: app-scoped ones not empty, the legacy key the company's.
void checkKeys(Endpoint endpoint, const Request& request, Problems& problems);

/// Whether the request names an API key at all; a device that never registered has none.
[[nodiscard]] bool hasKey(Endpoint endpoint, const Request& request);

}  // namespace orlan::devbackend
