#pragma once

#include <optional>
#include <string>

#include "orlan/base/json.hpp"
#include "orlan/platform/RandomSource.hpp"

namespace orlan {

/// A notification as a plain value, with the media that its payload names.
struct NotificationEnvelope {
  std::string id;  // a random UUID
  std::string title;
  std::string body;
  json::Object userInfo;

  [[nodiscard]] static NotificationEnvelope make(std::string title, std::string body, json::Object userInfo,
                                                 RandomSource& random);

  /// "mediaType", if it is a text.
  [[nodiscard]] std::optional<std::string> mediaType() const;

  /// "mediaUrl", if it is a text that is a URL (RFC 3986, absolute or relative; characters beyond ASCII must
  /// be percent-encoded).
  [[nodiscard]] std::optional<std::string> mediaUrl() const;

  friend bool operator==(const NotificationEnvelope&, const NotificationEnvelope&) = default;
};

}  // namespace orlan
