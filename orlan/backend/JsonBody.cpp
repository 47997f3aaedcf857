#include "orlan/backend/JsonBody.hpp"

#include <algorithm>

#include "orlan/base/text.hpp"

namespace orlan {
namespace {

// As deep as our own records are, never as deep as what somebody sends.
bool isUtf8(const json::Value& value) {  // NOLINT(misc-no-recursion)
  if (const auto* text = value.string()) return text::isUtf8(*text);
  if (const auto* array = value.array()) return std::all_of(array->begin(), array->end(), isUtf8);
  if (const auto* object = value.object()) {
    return std::all_of(object->begin(), object->end(), [](const json::Object::Member& member) {
      return text::isUtf8(member.first) && isUtf8(member.second);
    });
  }
  return true;
}

}  // namespace

Result<std::string> jsonBody(const json::Value& value) {
  if (!isUtf8(value)) return Unexpected(json::error("a text is not UTF-8"));
  return json::print(value);
}

}  // namespace orlan
