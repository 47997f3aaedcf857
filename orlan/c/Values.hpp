#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/base/Error.hpp"
#include "orlan/base/Time.hpp"
#include "orlan/base/json.hpp"
#include "orlan/c/Guard.hpp"
#include "orlan/c/types.h"
#include "orlan/platform/Circle.hpp"
#include "orlan/platform/Location.hpp"

/// Values on their way across the border. What is lent lives as long as what it is lent from.
namespace orlan::c {

// Inwards. A value that cannot be taken is a `Misuse` that names the argument.

[[nodiscard]] std::string_view bytes(orlan_string string, const char* name);
[[nodiscard]] std::string_view text(orlan_string string, const char* name);
[[nodiscard]] std::optional<std::string> optionalText(orlan_string string, const char* name);
[[nodiscard]] std::vector<std::string> texts(const orlan_string* strings, std::size_t count,
                                             const char* name);
[[nodiscard]] json::Value jsonValue(orlan_string string, const char* name);
/// The absent text is the empty object.
[[nodiscard]] json::Object jsonObject(orlan_string string, const char* name);
[[nodiscard]] Error error(const orlan_error& error);

[[nodiscard]] inline Coordinate from(orlan_coordinate at) {
  return {at.latitude, at.longitude};
}
[[nodiscard]] inline Circle from(const orlan_circle& circle) {
  return {from(circle.centre), circle.radius};
}
[[nodiscard]] inline Location from(const orlan_location& fix) {
  return {from(fix.coordinate), fix.horizontal_accuracy, TimePoint(Duration(fix.timestamp))};
}

/// A table that may be shorter or longer than ours: what it does not have is zero. NULL is all zero.
template <class Table>
[[nodiscard]] Table tableFrom(const Table* given, const char* name) {
  Table table{};
  if (given == nullptr) return table;
  if (given->struct_size < 2 * sizeof(void*)) {
    throw Misuse{ORLAN_INVALID_ARGUMENT, std::string(name) + ": struct_size is not set"};
  }
  std::memcpy(&table, given, std::min(given->struct_size, sizeof table));
  return table;
}

/// A delegate that holds such a table; NULL is nobody.
template <class Delegate, class Table>
[[nodiscard]] std::shared_ptr<Delegate> delegateFrom(const Table* given) {
  return given == nullptr ? nullptr : std::make_shared<Delegate>(tableFrom(given, "delegate"));
}

// Outwards.

[[nodiscard]] inline orlan_string absent() {
  return {nullptr, 0};
}
[[nodiscard]] inline orlan_string lent(const std::string& text) {
  return {text.c_str(), text.size()};
}
[[nodiscard]] inline orlan_string lent(const std::optional<std::string>& text) {
  return text ? lent(*text) : absent();
}
/// A temporary would be gone before the host looks at it.
orlan_string lent(std::string&&) = delete;

[[nodiscard]] inline orlan_error lent(const Error& error) {
  return {lent(error.domain), error.code, lent(error.description)};
}
[[nodiscard]] inline orlan_coordinate to(Coordinate at) {
  return {at.latitude, at.longitude};
}
[[nodiscard]] inline orlan_circle to(const Circle& circle) {
  return {to(circle.centre), circle.radius};
}
[[nodiscard]] inline orlan_location to(const Location& fix) {
  return {to(fix.coordinate), fix.horizontalAccuracy, fix.timestamp.time_since_epoch().count()};
}

/// A copy that `orlan_string_free` frees.
[[nodiscard]] orlan_string given(std::string_view text);

/// Writes what `make` makes to the host's `out`, which must not be NULL.
template <class Make>
void give(orlan_string* out, const char* name, Make&& make) {
  needed(out, name);
  *out = given(make());
}

}  // namespace orlan::c
