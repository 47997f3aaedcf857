#include "orlan/backend/AnswerCheck.hpp"

#include <string>

#include "orlan/backend/Errors.hpp"
#include "orlan/backend/RequestLayer.hpp"

namespace orlan {

Error logged(Error error, Logger& logger) {
  logger.error(error.description);
  return error;
}

Result<void> checkAnswer(const Result<HttpReply>& reply, Logger& logger) {
  if (!reply) {
    logger.error("HTTP Request Failed: " + reply.error().description);
    return Unexpected(reply.error());
  }
  if (!reply->status) return Unexpected(logged(backendErrors::invalidResponse(), logger));
  logger.log("HTTP Status Code: " + std::to_string(*reply->status));
  if (!isSuccess(*reply->status)) return Unexpected(logged(backendErrors::refused(*reply->status), logger));
  return {};
}

}  // namespace orlan
