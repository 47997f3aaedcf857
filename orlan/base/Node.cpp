#include <limits>

#include "orlan/base/json.hpp"

/// What of a node follows from the rest, whatever the parser.
namespace orlan::json {

std::string_view Node::kindName() const {
  constexpr std::string_view names[] = {"null",     "a boolean", "an integer", "a number",
                                        "a string", "an array",  "an object"};
  return names[static_cast<std::size_t>(kind())];
}

Value Node::value() const {
  switch (kind()) {
    case Kind::boolean:
      return *boolean();
    case Kind::integer:
      return *integer();
    case Kind::real:
      return number().value_or(std::numeric_limits<double>::max());  // which may be meant in an exact text
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

}  // namespace orlan::json
