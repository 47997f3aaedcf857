#pragma once

#include <span>
#include <string>
#include <string_view>

#include "orlan/backend/Multipart.hpp"
#include "orlan/platform/HttpClient.hpp"

/// Requests and answers as framed blocks for the log:
///
///     ┌─🔒  Registering device
///     │ URL: https://…
///     │ Headers:
///     │   Accept: application/json
///     │ Body:
///     {…}
///     └────────────────────────────────────────────
///
/// Headers stand as sent, keys included, except the application's own key ("x-app-api-key"), which no log
/// shows.
namespace orlan::logBlocks {

/// Ends of a block, with the line feed in front: 44 dashes around JSON exchanges, 54 around activity uploads.
[[nodiscard]] std::string_view shortCloser();
[[nodiscard]] std::string_view longCloser();

/// The lines up to the headers, which every request begins with. `title` carries its emoji and blanks.
[[nodiscard]] std::string opening(std::string_view title, const HttpRequest& request);

/// A whole request with its body as text.
[[nodiscard]] std::string textRequest(std::string_view title, const HttpRequest& request);

/// A whole activity upload: its fields, names padded to one column, in the place of the raw body.
[[nodiscard]] std::string formRequest(std::string_view title, const HttpRequest& request,
                                      std::span<const FormField> fields);

/// An answer with its headers in the order received; and the shorter form for activity uploads, with a phrase
/// for the status. A body that is missing or not UTF-8 shows as "<binary>".
[[nodiscard]] std::string response(int status, const HttpReply& reply);
[[nodiscard]] std::string uploadResponse(int status, const HttpReply& reply);

}  // namespace orlan::logBlocks
