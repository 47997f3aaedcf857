#include <fmt/core.h>

#include <utility>

#include "orlan/backend/Endpoints.hpp"
#include "orlan/backend/calls.hpp"
#include "orlan/base/Time.hpp"
#include "orlan/base/text.hpp"

namespace orlan::calls {
namespace {

/// Values stand as they are: the backend expects the blank and the colons of the time unescaped.
std::string bodyOf(const Context& with, std::string_view activity) {
  const auto now = with.phone.clock.now();
  return fmt::format("device_registered_id={}&time={}&activity={}", with.identity.vendorId(),
                     localDateTime(now, with.phone.clock.offsetFromUtc(now)), activity);
}

void finish(Logger& logger, const Result<HttpReply>& reply) {
  if (!reply) return logger.breadcrumb("HTTP Request Failed " + reply.error().description);
  const auto& body = reply->body;
  logger.breadcrumb(body && text::isUtf8(*body) ? "Received response: " + *body : "No data received");
}

}  // namespace

void createPluginActivity(const Context& with, std::string_view activity, const std::string& apiKey,
                          Config::Environment environment) {
  Logger& logger = with.logger;
  logger.breadcrumb("Preparing to create plugin activity");
  HttpRequest request{.method = "POST",
                      .url = with.client.platformUrl(environment, endpoints::pluginActivity),
                      .body = bodyOf(with, activity)};
  if (!with.requests.isUrl(request.url)) return logger.breadcrumb("Invalid URL");
  if (!text::isUtf8(*request.body)) return logger.breadcrumb("Failed to encode body");
  logger.breadcrumb("Calling the API with body: " + *request.body);
  logger.breadcrumb("Calling the API : " + request.url);
  logger.breadcrumb("Calling the API with apiKey: " + apiKey);
  request.addHeader("Content-Type", "application/x-www-form-urlencoded");
  request.addHeader("ApiKey", apiKey);
  with.requests.send(std::move(request),
                     [&logger](const Result<HttpReply>& reply) { finish(logger, reply); });
}

}  // namespace orlan::calls
