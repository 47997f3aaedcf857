#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "orlan/base/Result.hpp"
#include "orlan/base/json.hpp"

namespace orlan {

/// What the backend wants this application to know. The library only carries it.
struct OrlanConfiguration {
  std::int64_t notificationsCount = 0;
  std::int64_t daysCount = 0;
  std::int64_t batteryCount = 0;
  std::string privacyText;  // for the person to read

  /// Counts of 0 and no text: what applies while the backend says nothing.
  static const OrlanConfiguration& defaults();

  /// Reads the JSON form; what is missing takes its default, what is of another type is an error.
  [[nodiscard]] static Result<OrlanConfiguration> decode(std::string_view text);

  /// The JSON form, all four members in their order.
  [[nodiscard]] json::Value encode() const;

  friend bool operator==(const OrlanConfiguration&, const OrlanConfiguration&) = default;
};

/// The backend's answer.
struct ConfigurationResponse {
  std::optional<OrlanConfiguration> configuration;  // absent: the defaults apply

  [[nodiscard]] static Result<ConfigurationResponse> decode(std::string_view text);
};

}  // namespace orlan
