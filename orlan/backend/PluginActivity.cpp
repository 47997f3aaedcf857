#include "orlan/backend/PluginActivity.hpp"

#include <fmt/core.h>

#include <utility>

#include "orlan/backend/Endpoints.hpp"
#include "orlan/base/Time.hpp"
#include "orlan/base/text.hpp"

namespace orlan {

PluginActivity::PluginActivity(const ClientState& client, const DeviceIdentity& identity, Clock& clock,
                               RequestLayer& requests, Logger& logger)
    : client_(client), identity_(identity), clock_(clock), requests_(requests), logger_(logger) {}

void PluginActivity::create(std::string_view activity, const std::string& apiKey,
                            Config::Environment environment) {
  logger_.breadcrumb("Preparing to create plugin activity");
  HttpRequest request{.method = "POST",
                      .url = client_.platformUrl(environment, endpoints::pluginActivity),
                      .body = body(activity)};
  if (!requests_.isUrl(request.url)) return logger_.breadcrumb("Invalid URL");
  if (!text::isUtf8(*request.body)) return logger_.breadcrumb("Failed to encode body");
  logger_.breadcrumb("Calling the API with body: " + *request.body);
  logger_.breadcrumb("Calling the API : " + request.url);
  logger_.breadcrumb("Calling the API with apiKey: " + apiKey);
  request.addHeader("Content-Type", "application/x-www-form-urlencoded");
  request.addHeader("ApiKey", apiKey);
  requests_.send(std::move(request), [this](const Result<HttpReply>& reply) { finish(reply); });
}

/// Values stand as they are: the backend expects the blank and the colons of the time unescaped.
std::string PluginActivity::body(std::string_view activity) const {
  const auto now = clock_.now();
  return fmt::format("device_registered_id={}&time={}&activity={}", identity_.vendorId(),
                     localDateTime(now, clock_.offsetFromUtc(now)), activity);
}

void PluginActivity::finish(const Result<HttpReply>& reply) {
  if (!reply) return logger_.breadcrumb("HTTP Request Failed " + reply.error().description);
  const auto& body = reply->body;
  logger_.breadcrumb(body && text::isUtf8(*body) ? "Received response: " + *body : "No data received");
}

}  // namespace orlan
