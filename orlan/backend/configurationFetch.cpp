#include <string>
#include <utility>

#include "orlan/backend/AnswerCheck.hpp"
#include "orlan/backend/Credentials.hpp"
#include "orlan/backend/Endpoints.hpp"
#include "orlan/backend/Errors.hpp"
#include "orlan/backend/LogBlocks.hpp"
#include "orlan/backend/StoreKeys.hpp"
#include "orlan/backend/calls.hpp"
#include "orlan/base/Bytes.hpp"
#include "orlan/base/text.hpp"

namespace orlan::calls {
namespace {

/// The request as a block that also says when the legacy header is left out.
std::string requestBlock(const HttpRequest& request, const TransmissionAppCredentials& credentials) {
  std::string block = logBlocks::opening("⚙️  Fetching configuration", request);
  if (credentials.isComplete() && !credentials.includeLegacyApiKeyHeader) {
    block += "\n│   x-api-key: (disabled)";
  }
  return block.append(logBlocks::shortCloser());
}

std::optional<Result<OrlanConfiguration>> kept(const Context& with) {
  const auto data = with.phone.store.bytes(storeKeys::configuration);
  return data ? std::optional(OrlanConfiguration::decode(*data)) : std::nullopt;
}

Result<OrlanConfiguration> finish(const Context& with, const Result<HttpReply>& reply) {
  if (const auto checked = checkAnswer(reply, with.logger); !checked) return Unexpected(checked.error());
  if (!reply->body) return Unexpected(logged(backendErrors::noData(), with.logger));
  if (text::isUtf8(*reply->body)) with.logger.log("Response body: " + *reply->body);
  const auto response = ConfigurationResponse::decode(*reply->body);
  if (!response) {
    with.logger.error("Decoding error: " + response.error().description);
    return Unexpected(response.error());
  }
  auto configuration = response->configuration.value_or(OrlanConfiguration::defaults());
  with.phone.store.set(storeKeys::configuration, Bytes{json::print(configuration.encode())});
  with.logger.log("✅ Configuration fetched and cached");
  return configuration;
}

}  // namespace

std::optional<OrlanConfiguration> cachedConfiguration(const Context& with) {
  auto decoded = kept(with);
  return decoded && *decoded ? std::optional(std::move(**decoded)) : std::nullopt;
}

Single<OrlanConfiguration> fetchConfiguration(const Context& with, bool forceRefresh) {
  using Answer = Single<OrlanConfiguration>;
  if (auto decoded = forceRefresh ? std::nullopt : kept(with)) {
    if (*decoded) {
      with.logger.log("✅ Using cached configuration");
      return Answer::of(std::move(**decoded));
    }
    with.logger.warn("⚠️ Failed to decode cached config: " + decoded->error().description);
  }
  HttpRequest request{
      .method = "GET",
      .url = with.client.urls().transmissionUrl(with.client.env()) + endpoints::configuration};
  if (!with.requests.isUrl(request.url)) {
    return Answer::of(Unexpected(logged(backendErrors::invalidUrl(request.url), with.logger)));
  }
  const auto credentials = effectiveCredentials(with.client.credentials(), with.identity.apiKey(),
                                                with.phone.bundle.identifier().value_or(""));
  request.addHeader("Accept", "application/json");
  addTransmissionHeaders(request, credentials);
  with.logger.log(requestBlock(request, credentials));
  return with.requests.ask<OrlanConfiguration>(
      std::move(request), [&with](const Result<HttpReply>& reply) { return finish(with, reply); });
}

}  // namespace orlan::calls
