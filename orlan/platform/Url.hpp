#pragma once

#include <optional>
#include <string_view>

namespace orlan {

/// A URL taken apart, as views into its text.
struct UrlParts {
  std::string_view scheme;   // as written: schemes know no case; empty in a relative reference
  bool hasUserInfo = false;  // "user@" or "user:password@" in front of the host
  std::string_view host;     // without port; an IPv6 address without its brackets; empty when there is none
  std::string_view path;     // path, query and fragment exactly as written; may be empty
};

/// Absolute URLs and relative references by the letter of RFC 3986; nothing when the text is neither: a byte
/// that must be escaped, an incomplete escape, a bracket that does not belong to an IPv6 address, a port that
/// is no number from 1 to 65535, http or https without a host, the empty text.
[[nodiscard]] std::optional<UrlParts> parseUrl(std::string_view text);

/// Whether `host` is this machine by name or address: "localhost", 127.0.0.0/8 or ::1.
[[nodiscard]] bool isLoopback(std::string_view host);

/// Whether the text is an absolute URL that requests may go to: https to any host, http to the loopback only,
/// without user information, which logs would show.
[[nodiscard]] bool isSecureUrl(std::string_view text);

}  // namespace orlan
