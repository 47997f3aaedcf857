#pragma once

#include <optional>
#include <string_view>

#include "orlan/sdk/OrlanServices.hpp"
#include "tools/orlan/report/ReportCollector.hpp"
#include "tools/orlan/run/Narrator.hpp"
#include "tools/orlan/run/SurveyDialog.hpp"

namespace orlan::run {

/// What the host shows of a notification that was tapped: its details and, one by one, its questions. Main
/// thread; what it is given outlives it.
class DetailsScreen {
 public:
  DetailsScreen(OrlanServices& services, report::ReportCollector& collector, Narrator& narrator)
      : services_(services), collector_(collector), narrator_(narrator) {}

  /// Shows these in the place of others.
  void open(OrlanNotificationDetails details);

  [[nodiscard]] bool isAsking() const { return details_ && survey_.isAsking(); }

  /// Whether answers are on their way.
  [[nodiscard]] bool isSending() const { return sending_; }

  /// Answers the question that is open; the last answer sends them all.
  void answer(std::string_view text);

  /// Opens the call to action or the media, as far as a terminal can, and tells the backend.
  void openLink();
  void openMedia();

  /// Leaves the questions unanswered.
  void close();

 private:
  void ask();
  void submit();
  void say(std::string_view text) { collector_.note("host", std::string(text)); }

  OrlanServices& services_;
  report::ReportCollector& collector_;
  Narrator& narrator_;
  std::optional<OrlanNotificationDetails> details_;
  SurveyDialog survey_;
  bool sending_ = false;
};

}  // namespace orlan::run
