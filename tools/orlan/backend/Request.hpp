#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orlan::devbackend {

using Header = std::pair<std::string, std::string>;

/// A request as it arrived: nothing decoded, dropped or put in order, headers with empty values included.
/// Bytes that are no HTTP request are the body of one without a method.
struct Request {
  std::string method;
  std::string target;  // path and query, as sent
  std::vector<Header> headers;
  std::string body;
  bool isWhole = true;  // false: the body was too large or broke off
};

/// What a check found wrong, one line each, in the words that the developer at the other end reads.
using Problems = std::vector<std::string>;

/// The first header of that name; a null pointer when there is none.
[[nodiscard]] const std::string* findHeader(const Request& request, std::string_view name);

/// At most `limit` bytes of a peer's text between quotes, control characters escaped, "…" when more follows.
[[nodiscard]] std::string excerpt(std::string_view text, std::size_t limit = 60);

}  // namespace orlan::devbackend
