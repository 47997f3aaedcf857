#include "orlan/base/Fields.hpp"

#include "orlan/base/text.hpp"

namespace orlan::json {
namespace {

template <class T, class Found>
bool take(const std::optional<Found>& found, T& out, std::string_view wanted, Node node, Failure& failure) {
  if (!found) return failure.expected(wanted, node);
  out = T(*found);
  return true;
}

}  // namespace

bool Failure::expected(std::string_view what, Node found) {
  reason = "expected ";
  reason += what;
  reason += ", found ";
  reason += found.kindName();
  return false;
}

void Failure::under(std::string_view key) {
  const std::string_view joint = path.empty() || path.starts_with('[') ? "" : ".";
  path = text::escapedControls(key) + std::string(joint) + path;
}

void Failure::under(std::size_t index) {
  const std::string_view joint = path.empty() || path.starts_with('[') ? "" : ".";
  path = "[" + std::to_string(index) + "]" + std::string(joint) + path;
}

Error Failure::error() const {
  return json::error(path.empty() ? reason : path + ": " + reason);
}

bool decodeScalar(Node node, bool& out, Failure& failure) {
  return take(node.boolean(), out, "a boolean", node, failure);
}

bool decodeScalar(Node node, std::int64_t& out, Failure& failure) {
  return take(node.integer(), out, "an integer", node, failure);
}

bool decodeScalar(Node node, double& out, Failure& failure) {
  return take(node.number(), out, "a number", node, failure);
}

bool decodeScalar(Node node, std::string& out, Failure& failure) {
  return take(node.string(), out, "a string", node, failure);
}

bool decodeScalar(Node node, std::string_view& out, Failure& failure) {
  return take(node.string(), out, "a string", node, failure);
}

}  // namespace orlan::json
