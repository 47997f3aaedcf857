#include "orlan/sdk/SurveyOperations.hpp"

#include <fmt/core.h>

#include <algorithm>
#include <utility>

#include "orlan/backend/StoreKeys.hpp"
#include "orlan/base/text.hpp"
#include "orlan/sdk/Errors.hpp"
#include "orlan/surveys/AnswerValidation.hpp"

namespace orlan {
namespace {

void refuse(const Completion<bool>& completion, const Error& error) {
  if (completion) completion(Unexpected(error));
}

/// Listens to an answer: one line or the other, then whoever asked.
Completion<bool> telling(Logger& logger, std::string success, std::string failure,
                         Completion<bool> completion) {
  return [&logger, success = std::move(success), failure = std::move(failure),
          completion = std::move(completion)](const Result<bool>& result) {
    if (result) {
      logger.log(success);
    } else {
      logger.error(failure + result.error().description);
    }
    if (completion) completion(result);
  };
}

}  // namespace

SurveyOperations::SurveyOperations(const StartSequence& starting, Lazy<APIService>& api,
                                   const KeyValueStore& store, Logger& logger)
    : starting_(starting), api_(api), store_(store), logger_(logger) {}

void SurveyOperations::submit(const std::string& notificationId, const std::optional<std::string>& locationId,
                              const std::vector<SurveyAnswer>& answers, Completion<bool> completion) {
  auto request = prepared("submitSurveyResponse", notificationId, locationId);
  if (!request) return refuse(completion, request.error());
  if (const auto checked = checkAnswers(answers); !checked) return refuse(completion, checked.error());
  logger_.log(fmt::format("SURVEY-01 ▶ Submitting survey response notifId={} loc={} answers={}",
                          notificationId, locationId.value_or("nil"), answers.size()));
  request->activity = "survey_activity";
  request->responses = answers;
  pending_.listen<bool>(api_->submitSurveyResponse(*request),
                        telling(logger_, "SURVEY-02 ✅ Survey response submitted successfully",
                                "SURVEY-02 ❌ Survey submission failed: ", std::move(completion)));
}

void SurveyOperations::track(const std::string& notificationId, const std::optional<std::string>& locationId,
                             const std::string& activity, Completion<bool> completion) {
  auto request = prepared("trackSurveyEvent", notificationId, locationId);
  if (!request) return refuse(completion, request.error());
  logger_.log(
      fmt::format("SURVEY-TRACK-01 ▶ Tracking survey event: {} notifId={}", activity, notificationId));
  request->activity = activity;
  pending_.listen<bool>(api_->trackSurveyEvent(*request),
                        telling(logger_, "SURVEY-TRACK-02 ✅ Event tracked: " + activity,
                                "SURVEY-TRACK-02 ❌ Event tracking failed: ", std::move(completion)));
}

/// What both requests have in common, once it is known who is asking about which notification.
Result<SurveyResponseRequest> SurveyOperations::prepared(std::string_view operation,
                                                         const std::string& notificationId,
                                                         const std::optional<std::string>& locationId) {
  if (starting_.storedApiKey().empty()) {
    return Unexpected(
        refusal(fmt::format("{} called before SDK initialization", operation), errors::notInitialized()));
  }
  const auto device = store_.string(storeKeys::deviceID);
  if (!device) {
    return Unexpected(
        refusal(fmt::format("{} called before device registration", operation), errors::notRegistered()));
  }
  const auto notification = text::toInteger(notificationId);
  if (!notification) {
    return Unexpected(refusal(fmt::format("{}: Invalid notification ID {}", operation, notificationId),
                              errors::invalidNotificationId()));
  }
  SurveyResponseRequest request{*device, *notification, {}, std::nullopt, std::nullopt};
  if (locationId) request.locationId = text::toInteger(*locationId);
  return request;
}

Result<void> SurveyOperations::checkAnswers(const std::vector<SurveyAnswer>& answers) {
  if (answers.empty()) {
    return Unexpected(refusal("submitSurveyResponse: Empty answers list", errors::emptyAnswers()));
  }
  const auto invalid = static_cast<std::size_t>(std::count_if(
      answers.begin(), answers.end(), [&](const auto& one) { return isInvalid(one, logger_); }));
  if (invalid == 0) return {};
  return Unexpected(refusal(fmt::format("submitSurveyResponse: {} invalid answers", invalid),
                            errors::invalidAnswers(invalid)));
}

Error SurveyOperations::refusal(const std::string& line, Error error) {
  logger_.error(line);
  return error;
}

}  // namespace orlan
