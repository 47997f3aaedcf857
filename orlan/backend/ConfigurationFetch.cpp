#include "orlan/backend/ConfigurationFetch.hpp"

#include <string>
#include <utility>

#include "orlan/backend/AnswerCheck.hpp"
#include "orlan/backend/Credentials.hpp"
#include "orlan/backend/Endpoints.hpp"
#include "orlan/backend/Errors.hpp"
#include "orlan/backend/LogBlocks.hpp"
#include "orlan/backend/StoreKeys.hpp"
#include "orlan/base/Bytes.hpp"
#include "orlan/base/text.hpp"

namespace orlan {
namespace {

using Answer = Single<OrlanConfiguration>;

/// The request as a block that also says when the legacy header is left out.
std::string requestBlock(const HttpRequest& request, const TransmissionAppCredentials& credentials) {
  std::string block = logBlocks::opening("⚙️  Fetching configuration", request);
  if (credentials.isComplete() && !credentials.includeLegacyApiKeyHeader) {
    block += "\n│   x-api-key: (disabled)";
  }
  return block.append(logBlocks::shortCloser());
}

}  // namespace

ConfigurationFetch::ConfigurationFetch(const ClientState& client, const DeviceIdentity& identity,
                                       const Bundle& bundle, KeyValueStore& store, RequestLayer& requests,
                                       Logger& logger)
    : client_(client),
      identity_(identity),
      bundle_(bundle),
      store_(store),
      requests_(requests),
      logger_(logger) {}

Answer ConfigurationFetch::fetch(bool forceRefresh) {
  if (!forceRefresh) {
    if (auto kept = usableCache()) return Answer::of(std::move(*kept));
  }
  return request();
}

std::optional<OrlanConfiguration> ConfigurationFetch::cached() const {
  const auto data = store_.bytes(storeKeys::configuration);
  if (!data) return std::nullopt;
  auto decoded = OrlanConfiguration::decode(*data);
  return decoded ? std::optional(std::move(*decoded)) : std::nullopt;
}

std::optional<OrlanConfiguration> ConfigurationFetch::usableCache() {
  const auto data = store_.bytes(storeKeys::configuration);
  if (!data) return std::nullopt;
  auto decoded = OrlanConfiguration::decode(*data);
  if (!decoded) {
    logger_.warn("⚠️ Failed to decode cached config: " + decoded.error().description);
    return std::nullopt;
  }
  logger_.log("✅ Using cached configuration");
  return std::move(*decoded);
}

Answer ConfigurationFetch::request() {
  HttpRequest request{.method = "GET",
                      .url = client_.urls().transmissionUrl(client_.env()) + endpoints::configuration};
  if (!requests_.isUrl(request.url)) {
    return Answer::of(Unexpected(logged(backendErrors::invalidUrl(request.url), logger_)));
  }
  const auto credentials =
      effectiveCredentials(client_.credentials(), identity_.apiKey(), bundle_.identifier().value_or(""));
  request.addHeader("Accept", "application/json");
  addTransmissionHeaders(request, credentials);
  logger_.log(requestBlock(request, credentials));
  auto [answer, resolve] = Answer::pending();
  requests_.send(std::move(request), [this, resolve = resolve](const Result<HttpReply>& reply) {
    requests_.deliver<OrlanConfiguration>(resolve, finish(reply));
  });
  return answer;
}

Result<OrlanConfiguration> ConfigurationFetch::finish(const Result<HttpReply>& reply) {
  if (const auto checked = checkAnswer(reply, logger_); !checked) return Unexpected(checked.error());
  if (!reply->body) return Unexpected(logged(backendErrors::noData(), logger_));
  if (text::isUtf8(*reply->body)) logger_.log("Response body: " + *reply->body);
  const auto response = ConfigurationResponse::decode(*reply->body);
  if (!response) {
    logger_.error("Decoding error: " + response.error().description);
    return Unexpected(response.error());
  }
  auto configuration = response->configuration.value_or(OrlanConfiguration::defaults());
  store_.set(storeKeys::configuration, Bytes{json::print(configuration.encode())});
  logger_.log("✅ Configuration fetched and cached");
  return configuration;
}

}  // namespace orlan
