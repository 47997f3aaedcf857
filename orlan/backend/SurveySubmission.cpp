#include "orlan/backend/SurveySubmission.hpp"

#include <fmt/core.h>

#include <string>
#include <utility>

#include "orlan/backend/Endpoints.hpp"
#include "orlan/backend/Errors.hpp"
#include "orlan/backend/JsonBody.hpp"
#include "orlan/backend/LogBlocks.hpp"
#include "orlan/surveys/SurveyFields.hpp"

namespace orlan {

SurveySubmission::SurveySubmission(const ClientState& client, const DeviceIdentity& identity,
                                   RequestLayer& requests, Logger& logger)
    : client_(client), identity_(identity), requests_(requests), logger_(logger) {}

Single<bool> SurveySubmission::submit(const SurveyResponseRequest& response) {
  return send(response, "SURVEY-02 ❌ Survey submission failed: ");
}

Single<bool> SurveySubmission::track(const SurveyResponseRequest& event) {
  return send(event, "SURVEY-TRACK-02 ❌ Event tracking failed: ");
}

Single<bool> SurveySubmission::send(const SurveyResponseRequest& survey, std::string_view encodingFailure) {
  auto body = jsonBody(json::encode(survey));
  if (!body) {
    logger_.error("Failed to encode survey request: " + body.error().description);
    logger_.error(std::string(encodingFailure) + body.error().description);
    return Single<bool>::of(Unexpected(body.error()));
  }
  HttpRequest request{
      .method = "POST", .url = client_.platformUrl(endpoints::surveyResponse), .body = std::move(*body)};
  request.addHeader("Content-Type", "application/json");
  request.addHeader("Accept", "application/json");
  request.addHeader("ApiKey", identity_.apiKey());
  logger_.log(fmt::format("┌─📝 Submitting survey response\n│ URL: {}\n│ Body:\n{}{}", request.url,
                          *request.body, logBlocks::shortCloser()));
  auto [answer, resolve] = Single<bool>::pending();
  requests_.send(std::move(request), [this, resolve = resolve](const Result<HttpReply>& reply) {
    requests_.deliver<bool>(resolve, finish(reply));
  });
  return answer;
}

Result<bool> SurveySubmission::finish(const Result<HttpReply>& reply) {
  if (!reply) {
    logger_.error("Survey submission failed: " + reply.error().description);
    return Unexpected(reply.error());
  }
  if (!reply->status) return Unexpected(urlErrors::badServerResponse());
  logger_.log(fmt::format("┌─📬 Survey response HTTP {}", *reply->status));
  if (!isSuccess(*reply->status)) {
    const Error error = backendErrors::surveyRefused(*reply->status);
    logger_.error("└─❌ " + error.description);
    return Unexpected(error);
  }
  logger_.log("└─✅ Survey submitted successfully");
  return true;
}

}  // namespace orlan
