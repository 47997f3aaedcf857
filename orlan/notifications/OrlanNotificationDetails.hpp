#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "orlan/surveys/Survey.hpp"

namespace orlan {

/// A presented or tapped notification in the form in which a host shows it. A value: nobody changes a record
/// that has been published.
struct OrlanNotificationDetails {
  /// For a notification or location whose identifier the payload does not tell.
  static constexpr std::int64_t none = -1;

  std::string id;  // a random UUID of the record: one notification handled twice gives two
  std::string headline;
  std::string body;
  std::optional<std::string> mediaType;  // such as "image"
  std::optional<std::string> mediaURL;   // as sent: any text
  std::optional<std::string> ctaLabel;
  std::optional<std::string> ctaURL;  // as sent: any text
  std::int64_t notifID = none;
  std::int64_t locationID = none;
  std::optional<std::vector<SurveyQuestion>> questions;
  std::optional<std::string> completionMessage;  // to be shown after a completed survey

  friend bool operator==(const OrlanNotificationDetails&, const OrlanNotificationDetails&) = default;
};

}  // namespace orlan
