#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "orlan/platform/RandomSource.hpp"
#include "orlan/surveys/Survey.hpp"

namespace orlan {

/// A presented or tapped notification in the form in which a host shows it. A value whose parts never change:
/// a record that has been published can only be replaced. Any thread.
class OrlanNotificationDetails {
 public:
  /// For a notification or location whose identifier the payload does not tell.
  static constexpr std::int64_t none = -1;

  /// What a record is made of; each is read under the same name.
  struct Content {
    std::string headline;
    std::string body;
    std::optional<std::string> mediaType;
    std::optional<std::string> mediaURL;
    std::optional<std::string> ctaLabel;
    std::optional<std::string> ctaURL;
    std::int64_t notifID = none;
    std::int64_t locationID = none;
    std::optional<std::vector<SurveyQuestion>> questions;
    std::optional<std::string> completionMessage;

    friend bool operator==(const Content&, const Content&) = default;
  };

  /// Empty texts, no identifiers, nothing else.
  OrlanNotificationDetails() : OrlanNotificationDetails(Content()) {}

  /// The `id` comes from the phone with which the library is installed.
  explicit OrlanNotificationDetails(Content content);

  OrlanNotificationDetails(Content content, RandomSource& random)
      : id_(randomUuid(random)), content_(std::move(content)) {}

  /// A random UUID of the record: one notification handled twice gives two.
  [[nodiscard]] const std::string& id() const { return id_; }

  /// All the rest, for a record that differs in some of it.
  [[nodiscard]] const Content& content() const { return content_; }

  [[nodiscard]] const std::string& headline() const { return content_.headline; }
  [[nodiscard]] const std::string& body() const { return content_.body; }

  /// Such as "image".
  [[nodiscard]] const std::optional<std::string>& mediaType() const { return content_.mediaType; }

  /// As sent: any text.
  [[nodiscard]] const std::optional<std::string>& mediaURL() const { return content_.mediaURL; }
  [[nodiscard]] const std::optional<std::string>& ctaLabel() const { return content_.ctaLabel; }

  /// As sent: any text.
  [[nodiscard]] const std::optional<std::string>& ctaURL() const { return content_.ctaURL; }

  [[nodiscard]] std::int64_t notifID() const { return content_.notifID; }
  [[nodiscard]] std::int64_t locationID() const { return content_.locationID; }
  [[nodiscard]] const std::optional<std::vector<SurveyQuestion>>& questions() const {
    return content_.questions;
  }

  /// To be shown after a completed survey.
  [[nodiscard]] const std::optional<std::string>& completionMessage() const {
    return content_.completionMessage;
  }

  /// The same record, its `id` included.
  friend bool operator==(const OrlanNotificationDetails&, const OrlanNotificationDetails&) = default;

 private:
  std::string id_;
  Content content_;
};

}  // namespace orlan
