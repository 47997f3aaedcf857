#pragma once

#include <optional>
#include <string>
#include <utility>

#include "orlan/base/json.hpp"
#include "orlan/platform/RandomSource.hpp"

namespace orlan {

/// A notification as a plain value, with the media that its payload names. Any thread.
struct NotificationEnvelope {
  /// The `id` comes from the phone with which the library is installed.
  NotificationEnvelope(std::string withTitle, std::string withBody, json::Object withUserInfo);

  NotificationEnvelope(std::string withTitle, std::string withBody, json::Object withUserInfo,
                       RandomSource& random)
      : id(randomUuid(random)),
        title(std::move(withTitle)),
        body(std::move(withBody)),
        userInfo(std::move(withUserInfo)) {}

  std::string id;  // a random UUID
  std::string title;
  std::string body;
  json::Object userInfo;

  /// "mediaType", if it is a text.
  [[nodiscard]] std::optional<std::string> mediaType() const;

  /// "mediaUrl", if it is a text that is a URL (RFC 3986, absolute or relative; characters beyond ASCII must
  /// be percent-encoded).
  [[nodiscard]] std::optional<std::string> mediaUrl() const;

  friend bool operator==(const NotificationEnvelope&, const NotificationEnvelope&) = default;
};

}  // namespace orlan
