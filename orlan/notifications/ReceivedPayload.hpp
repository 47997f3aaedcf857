#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "orlan/base/json.hpp"

namespace orlan {

/// What the user info of a received notification says, under whichever of its alternative keys. Keys that are
/// missing or have a value of another type never fail: identifiers become -1, texts stay absent.
///
/// An identifier is a text (optional sign and ASCII digits within 64 bits, nothing else) or a whole number. A
/// text ends the search, also when it is no number. A double that is whole and within 64 bits is that
/// integer; every other value, true and false among them, is passed over.
struct ReceivedPayload {
  /// What stands under "notification_data".
  struct Nested {
    std::int64_t notifID = -1;
    std::optional<std::string> mediaType;
    std::optional<std::string> mediaURL;
    std::optional<std::string> ctaLabel;
    std::optional<std::string> ctaURL;

    friend bool operator==(const Nested&, const Nested&) = default;
  };

  std::optional<Nested> nested;  // when there is such a dictionary; what it says wins over the other keys
  std::int64_t notifID = -1;
  std::int64_t locationID = -1;
  std::optional<std::string> mediaType;
  std::optional<std::string> mediaURL;
  std::optional<std::string> ctaLabel;
  std::optional<std::string> ctaURL;
  std::optional<std::string> completionMessage;

  friend bool operator==(const ReceivedPayload&, const ReceivedPayload&) = default;

  [[nodiscard]] static ReceivedPayload parse(const json::Object& userInfo);
};

}  // namespace orlan
