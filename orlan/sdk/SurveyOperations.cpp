// What a host says about a survey is checked here and handed to the backend.
#include <fmt/core.h>

#include <algorithm>
#include <utility>

#include "orlan/backend/StoreKeys.hpp"
#include "orlan/base/text.hpp"
#include "orlan/sdk/Errors.hpp"
#include "orlan/sdk/OrlanPluginParts.hpp"
#include "orlan/surveys/AnswerValidation.hpp"

namespace orlan {
namespace {

Unexpected<Error> refusal(Logger& logger, const std::string& line, Error error) {
  logger.error(line);
  return Unexpected(std::move(error));
}

void refuse(const Completion<bool>& completion, const Error& error) {
  if (completion) completion(Unexpected(error));
}

}  // namespace

Result<SurveyResponseRequest> OrlanPlugin::Parts::surveyRequest(
    std::string_view operation, const std::string& notificationId,
    const std::optional<std::string>& locationId) {
  if (starting.storedApiKey().empty()) {
    return refusal(logger, fmt::format("{} called before SDK initialization", operation),
                   errors::notInitialized());
  }
  const auto device = phone.store.string(storeKeys::deviceID);
  if (!device) {
    return refusal(logger, fmt::format("{} called before device registration", operation),
                   errors::notRegistered());
  }
  const auto notification = text::toInteger(notificationId);
  if (!notification) {
    return refusal(logger, fmt::format("{}: Invalid notification ID {}", operation, notificationId),
                   errors::invalidNotificationId());
  }
  SurveyResponseRequest request{*device, *notification, {}, std::nullopt, std::nullopt};
  if (locationId) request.locationId = text::toInteger(*locationId);
  return request;
}

Result<void> OrlanPlugin::Parts::checkAnswers(const std::vector<SurveyAnswer>& answers) {
  if (answers.empty()) {
    return refusal(logger, "submitSurveyResponse: Empty answers list", errors::emptyAnswers());
  }
  const auto invalid = static_cast<std::size_t>(
      std::count_if(answers.begin(), answers.end(), [&](const auto& one) { return isInvalid(one, logger); }));
  if (invalid == 0) return {};
  return refusal(logger, fmt::format("submitSurveyResponse: {} invalid answers", invalid),
                 errors::invalidAnswers(invalid));
}

void OrlanPlugin::submitSurveyResponse(const std::string& notificationId,
                                       const std::optional<std::string>& locationId,
                                       const std::vector<SurveyAnswer>& answers,
                                       Completion<bool> completion) {
  const Turn turn = parts_->phone.main.enter();
  auto request = parts_->surveyRequest("submitSurveyResponse", notificationId, locationId);
  if (!request) return refuse(completion, request.error());
  if (const auto checked = parts_->checkAnswers(answers); !checked) {
    return refuse(completion, checked.error());
  }
  parts_->logger.log(fmt::format("SURVEY-01 ▶ Submitting survey response notifId={} loc={} answers={}",
                                 notificationId, locationId.value_or("nil"), answers.size()));
  request->activity = "survey_activity";
  request->responses = answers;
  parts_->pending.listen(
      parts_->services.api->submitSurveyResponse(*request),
      [](bool) { return "SURVEY-02 ✅ Survey response submitted successfully"; },
      "SURVEY-02 ❌ Survey submission failed: ", std::move(completion));
}

void OrlanPlugin::trackSurveyEvent(const std::string& notificationId,
                                   const std::optional<std::string>& locationId, const std::string& activity,
                                   Completion<bool> completion) {
  const Turn turn = parts_->phone.main.enter();
  auto request = parts_->surveyRequest("trackSurveyEvent", notificationId, locationId);
  if (!request) return refuse(completion, request.error());
  parts_->logger.log(
      fmt::format("SURVEY-TRACK-01 ▶ Tracking survey event: {} notifId={}", activity, notificationId));
  request->activity = activity;
  parts_->pending.listen(
      parts_->services.api->trackSurveyEvent(*request),
      [activity](bool) { return "SURVEY-TRACK-02 ✅ Event tracked: " + activity; },
      "SURVEY-TRACK-02 ❌ Event tracking failed: ", std::move(completion));
}

}  // namespace orlan
