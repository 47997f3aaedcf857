#include "orlan/base/json.hpp"

/// What of a node follows from the rest, whatever the parser.
namespace orlan::json {

std::string_view Node::kindName() const {
  switch (kind()) {
    case Kind::boolean:
      return "a boolean";
    case Kind::integer:
      return "an integer";
    case Kind::real:
      return "a number";
    case Kind::string:
      return "a string";
    case Kind::array:
      return "an array";
    case Kind::object:
      return "an object";
    case Kind::null:
      break;
  }
  return "null";
}

Value Node::value() const {
  switch (kind()) {
    case Kind::boolean:
      return *boolean();
    case Kind::integer:
      return *integer();
    case Kind::real:
      return *number();
    case Kind::string:
      return *string();
    case Kind::array: {
      Array array;
      array.reserve(size());
      elements([&](Node child) {
        array.push_back(child.value());
        return true;
      });
      return array;
    }
    case Kind::object: {
      std::vector<Object::Member> found;
      found.reserve(size());
      members([&](std::string_view key, Node child) {
        found.emplace_back(key, child.value());
        return true;
      });
      return Object(std::move(found));
    }
    case Kind::null:
      break;
  }
  return {};
}

Result<Value> parse(std::string_view text) {
  const auto document = Document::parse(text);
  if (!document) return Unexpected(document.error());
  return document->root().value();
}

}  // namespace orlan::json
