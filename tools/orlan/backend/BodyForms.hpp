#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "orlan/base/json.hpp"
#include "tools/orlan/backend/Field.hpp"
#include "tools/orlan/backend/Request.hpp"

/// The three shapes that bodies have. Each adds what is wrong to `problems`, in the order in which it stands
/// there.
namespace orlan::devbackend {

/// The body as a JSON object with exactly these members, each once; nothing, and a problem, when it is no
/// JSON object.
[[nodiscard]] std::optional<json::Document> checkJson(const Request& request, std::span<const Field> members,
                                                      Problems& problems);

/// The last member of that key.
[[nodiscard]] std::optional<json::Node> member(json::Node object, std::string_view key);
[[nodiscard]] std::optional<std::string_view> textMember(json::Node object, std::string_view key);

/// multipart/form-data, byte for byte; the content type is the header check's affair.
void checkMultipart(const Request& request, std::span<const Field> parts, Problems& problems);

/// The boundary that the content type names, whatever its form; empty when it names none.
[[nodiscard]] std::string boundaryOf(const Request& request);

/// name=value&name=value, nothing escaped.
void checkForm(const Request& request, std::span<const Field> fields, Problems& problems);

}  // namespace orlan::devbackend
