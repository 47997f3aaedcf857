#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "orlan/base/json.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {

/// A member that an object must, or may, have.
struct ExpectedMember {
  std::string_view key;
  json::Kind kind;
  bool required = true;
};

/// The body as a JSON object with exactly these members; nothing, and a problem, when it is no JSON object.
[[nodiscard]] std::optional<json::Document> parseObject(const Request& request,
                                                        std::span<const ExpectedMember> expected,
                                                        Problems& problems);

/// Each member once and of its kind (an integer is no real, null is nothing but null), and no others.
/// `path` is where the object stands ("body", "responses[2]"). False when it is no object.
bool checkMembers(json::Node node, std::string_view path, std::span<const ExpectedMember> expected,
                  Problems& problems);

/// The last member of that key.
[[nodiscard]] std::optional<json::Node> member(json::Node object, std::string_view key);
[[nodiscard]] std::optional<std::string_view> stringMember(json::Node object, std::string_view key);

/// Reports a text member that is there and not `value`.
void expectText(json::Node object, std::string_view key, std::string_view value, Problems& problems);

/// Reports text members that are there and empty.
void expectFilled(json::Node object, std::span<const std::string_view> keys, Problems& problems);

}  // namespace orlan::devbackend
