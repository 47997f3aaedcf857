#include <fmt/core.h>

#include <string>
#include <utility>

#include "orlan/backend/Endpoints.hpp"
#include "orlan/backend/Errors.hpp"
#include "orlan/backend/LogBlocks.hpp"
#include "orlan/backend/calls.hpp"
#include "orlan/surveys/SurveyFields.hpp"

namespace orlan::calls {
namespace {

Result<bool> finish(Logger& logger, const Result<HttpReply>& reply) {
  if (!reply) {
    logger.error("Survey submission failed: " + reply.error().description);
    return Unexpected(reply.error());
  }
  if (!reply->status) return Unexpected(urlErrors::badServerResponse());
  logger.log(fmt::format("┌─📬 Survey response HTTP {}", *reply->status));
  if (!isSuccess(*reply->status)) {
    const Error error = backendErrors::surveyRefused(*reply->status);
    logger.error("└─❌ " + error.description);
    return Unexpected(error);
  }
  logger.log("└─✅ Survey submitted successfully");
  return true;
}

Single<bool> send(const Context& with, const SurveyResponseRequest& survey,
                  std::string_view encodingFailure) {
  Logger& logger = with.logger;
  auto body = json::encodeText(survey);
  if (!body) {
    logger.error("Failed to encode survey request: " + body.error().description);
    logger.error(std::string(encodingFailure) + body.error().description);
    return Single<bool>::of(Unexpected(body.error()));
  }
  HttpRequest request{
      .method = "POST", .url = with.client.platformUrl(endpoints::surveyResponse), .body = std::move(*body)};
  request.addHeader("Content-Type", "application/json");
  request.addHeader("Accept", "application/json");
  request.addHeader("ApiKey", with.identity.apiKey());
  logger.log(fmt::format("┌─📝 Submitting survey response\n│ URL: {}\n│ Body:\n{}{}", request.url,
                         *request.body, logBlocks::shortCloser()));
  return with.requests.ask<bool>(std::move(request),
                                 [&logger](const Result<HttpReply>& reply) { return finish(logger, reply); });
}

}  // namespace

Single<bool> submitSurveyResponse(const Context& with, const SurveyResponseRequest& response) {
  return send(with, response, "SURVEY-02 ❌ Survey submission failed: ");
}

Single<bool> trackSurveyEvent(const Context& with, const SurveyResponseRequest& event) {
  return send(with, event, "SURVEY-TRACK-02 ❌ Event tracking failed: ");
}

}  // namespace orlan::calls
