#include <fmt/core.h>

#include <utility>

#include "orlan/backend/DeviceRecord.hpp"
#include "orlan/backend/Endpoints.hpp"
#include "orlan/backend/StoreKeys.hpp"
#include "orlan/backend/calls.hpp"

namespace orlan::calls {
namespace {

/// A token may come before a start in this process: the environment of the last start counts, if there was
/// one.
Config::Environment environmentOf(const Context& with) {
  const auto stored = with.phone.store.string(storeKeys::environment).value_or("");
  return fromRawValue<Config::Environment>(stored).value_or(with.client.env());
}

void finish(const Context& with, const std::string& token, const Result<HttpReply>& reply) {
  Logger& logger = with.logger;
  if (!reply) return logger.warn("Token sync failed: " + reply.error().description);
  if (!reply->status) return logger.warn("Token sync failed: invalid response");
  if (!isSuccess(*reply->status)) {
    return logger.warn(fmt::format("Token sync failed with status: {}", *reply->status));
  }
  with.phone.store.set(storeKeys::lastSyncedToken, token);
  logger.log("✅ Push token synced");
}

}  // namespace

std::optional<std::string> tokenToSync(std::string_view current, const std::optional<std::string>& lastSynced,
                                       bool force) {
  if (current == kNoPushToken) {
    const bool known = lastSynced && !lastSynced->empty();
    return force && known ? lastSynced : std::nullopt;
  }
  if (!force && lastSynced == current) return std::nullopt;
  return std::string(current);
}

void syncToken(const Context& with, const std::string& apiKey, bool force) {
  const auto lastSynced = with.phone.store.string(storeKeys::lastSyncedToken);
  const auto token = tokenToSync(with.client.currentPushToken(), lastSynced, force);
  if (!token) return;
  auto url = with.client.platformUrl(environmentOf(with), endpoints::deviceRecord);
  if (!with.requests.isUrl(url)) {
    with.logger.warn("Skipping token sync - invalid URL: " + url);
    return;
  }
  const auto record = syncRecord(with, apiKey, *token);
  auto body = json::encodeText(record);
  if (!body) return with.logger.warn("Skipping token sync - failed to serialize body");
  with.logger.log("🔄 Syncing refreshed push token to backend");
  with.requests.send(deviceRecordRequest(std::move(url), record, std::move(*body)),
                     [&with, token = *token](const Result<HttpReply>& reply) { finish(with, token, reply); });
}

}  // namespace orlan::calls
