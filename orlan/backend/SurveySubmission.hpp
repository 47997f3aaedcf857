#pragma once

#include <string_view>

#include "orlan/backend/ClientState.hpp"
#include "orlan/backend/DeviceIdentity.hpp"
#include "orlan/backend/RequestLayer.hpp"
#include "orlan/base/Single.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/surveys/Survey.hpp"

namespace orlan {

/// Sends answers and survey events; each is on its own, nothing is queued or repeated. Any thread.
class SurveySubmission {
 public:
  SurveySubmission(const ClientState& client, const DeviceIdentity& identity, RequestLayer& requests,
                   Logger& logger);

  /// As `APIService::submitSurveyResponse` and `APIService::trackSurveyEvent`.
  Single<bool> submit(const SurveyResponseRequest& response);
  Single<bool> track(const SurveyResponseRequest& event);

 private:
  Single<bool> send(const SurveyResponseRequest& survey, std::string_view encodingFailure);
  Result<bool> finish(const Result<HttpReply>& reply);

  const ClientState& client_;
  const DeviceIdentity& identity_;
  RequestLayer& requests_;
  Logger& logger_;
};

}  // namespace orlan
