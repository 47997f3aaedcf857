#include "orlan/backend/TokenSync.hpp"

#include <fmt/core.h>

#include <utility>

#include "orlan/backend/Endpoints.hpp"
#include "orlan/backend/StoreKeys.hpp"

namespace orlan {

std::optional<std::string> tokenToSync(std::string_view current, const std::optional<std::string>& lastSynced,
                                       bool force) {
  if (current == kNoPushToken) {
    const bool known = lastSynced && !lastSynced->empty();
    return force && known ? lastSynced : std::nullopt;
  }
  if (!force && lastSynced == current) return std::nullopt;
  return std::string(current);
}

TokenSync::TokenSync(const ClientState& client, const DeviceRecords& records, KeyValueStore& store,
                     RequestLayer& requests, Logger& logger)
    : client_(client), records_(records), store_(store), requests_(requests), logger_(logger) {}

void TokenSync::sync(const std::string& apiKey, bool force) {
  const auto token = tokenToSync(client_.pushToken(), store_.string(storeKeys::lastSyncedToken), force);
  if (!token) return;
  auto url = client_.platformUrl(environment(), endpoints::deviceRecord);
  if (!requests_.isUrl(url)) {
    logger_.warn("Skipping token sync - invalid URL: " + url);
    return;
  }
  auto request = deviceRecordRequest(std::move(url), records_.forSync(apiKey, *token));
  logger_.log("🔄 Syncing refreshed push token to backend");
  requests_.send(std::move(request),
                 [this, token = *token](const Result<HttpReply>& reply) { finish(token, reply); });
}

/// A token may come before a start in this process: the environment of the last start counts, if there was
/// one.
Config::Environment TokenSync::environment() const {
  const auto stored = fromRawValue<Config::Environment>(store_.string(storeKeys::environment).value_or(""));
  return stored.value_or(client_.env());
}

void TokenSync::finish(const std::string& token, const Result<HttpReply>& reply) {
  if (!reply) return logger_.warn("Token sync failed: " + reply.error().description);
  if (!reply->status) return logger_.warn("Token sync failed: invalid response");
  if (!isSuccess(*reply->status)) {
    return logger_.warn(fmt::format("Token sync failed with status: {}", *reply->status));
  }
  store_.set(storeKeys::lastSyncedToken, token);
  logger_.log("✅ Push token synced");
}

}  // namespace orlan
