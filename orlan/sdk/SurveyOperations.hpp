#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/backend/APIService.hpp"
#include "orlan/base/Lazy.hpp"
#include "orlan/platform/KeyValueStore.hpp"
#include "orlan/sdk/Completions.hpp"
#include "orlan/sdk/PendingAnswers.hpp"
#include "orlan/sdk/StartSequence.hpp"

namespace orlan {

/// Checks what a host says about a survey and hands it to the backend. Main thread.
class SurveyOperations {
 public:
  SurveyOperations(const StartSequence& starting, Lazy<APIService>& api, const KeyValueStore& store,
                   Logger& logger);

  /// As `OrlanPlugin::submitSurveyResponse` and `OrlanPlugin::trackSurveyEvent`.
  void submit(const std::string& notificationId, const std::optional<std::string>& locationId,
              const std::vector<SurveyAnswer>& answers, Completion<bool> completion);
  void track(const std::string& notificationId, const std::optional<std::string>& locationId,
             const std::string& activity, Completion<bool> completion);

 private:
  [[nodiscard]] Result<SurveyResponseRequest> prepared(std::string_view operation,
                                                       const std::string& notificationId,
                                                       const std::optional<std::string>& locationId);
  [[nodiscard]] Result<void> checkAnswers(const std::vector<SurveyAnswer>& answers);
  [[nodiscard]] Error refusal(const std::string& line, Error error);

  const StartSequence& starting_;
  Lazy<APIService>& api_;
  const KeyValueStore& store_;
  Logger& logger_;
  PendingAnswers pending_;
};

}  // namespace orlan
