#pragma once

#include <optional>
#include <string_view>

#include "orlan/platform/HttpClient.hpp"

/// What every phone's HTTP client refuses, said once.
namespace orlan::phone {

/// Scheme, host and the rest of an absolute http or https URL, as views into it.
struct UrlParts {
  std::string_view scheme;  // as written: schemes know no case
  std::string_view host;    // without port and user information; an IPv6 address without its brackets
  std::string_view path;    // path, query and fragment exactly as written; may be empty
};

/// Nothing when the text is no such URL: another scheme, no host, a blank, a control character or a byte
/// beyond ASCII somewhere, user information, or a port that is no number up to 65535.
[[nodiscard]] std::optional<UrlParts> parseUrl(std::string_view text);

/// Whether `host` is this machine by name or address: "localhost", 127.0.0.0/8 or ::1.
[[nodiscard]] bool isLoopback(std::string_view host);

/// Whether a phone sends to this URL: https anywhere, plain http to the loopback only.
[[nodiscard]] bool isAcceptableUrl(std::string_view text);

/// Why `request` must not be sent: a URL that is not acceptable (`urlErrors::badURL`), or a method or header
/// that would not stay within its line on the wire (`urlErrors::other`). Nothing when it may.
[[nodiscard]] std::optional<Error> refusal(const HttpRequest& request);

}  // namespace orlan::phone
