#pragma once

#include <span>
#include <string_view>

#include "orlan/base/json.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {

/// What a value must look like.
struct Rule {
  std::string_view expected = {};                   // for a person; empty: anything will do
  bool (*holds)(std::string_view value) = nullptr;  // none: one of the words between the "|" of `expected`
};

/// One header, JSON member, part or form field of a request.
struct Field {
  std::string_view name = {};
  Rule rule = {};
  // Of JSON alone:
  json::Kind kind = json::Kind::string;  // exactly: an integer is no real, null is nothing but null
  bool isRequired = true;
  std::span<const Field> content = {};  // an object's members, or the one form that an array's elements have
};

/// Reports a value that is not as it must be. `where` it stands: "body.distance", "header Accept".
void checkValue(const Rule& rule, std::string_view where, std::string_view value, Problems& problems);

/// Rules for texts.
[[nodiscard]] bool isFilled(std::string_view text);
inline constexpr Rule filled{"some text", isFilled};

/// "E621E1F8-C36C-495A-93FC-0C247A3E6E5F": the standard form with upper-case letters.
[[nodiscard]] bool isUuid(std::string_view text);

/// "2025-03-14 09:26:53", and a day and time that exist (a leap second included).
[[nodiscard]] bool isDateTime(std::string_view text);

/// A 64-bit integer in plain decimal form: no plus sign, no leading zeros, no "-0".
[[nodiscard]] bool isPlainInteger(std::string_view text);

/// Written as the shortest decimal text that reads back as the same double.
[[nodiscard]] bool isLatitude(std::string_view text);
[[nodiscard]] bool isLongitude(std::string_view text);

}  // namespace orlan::devbackend
