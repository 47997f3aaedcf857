#pragma once

#include <optional>

#include "orlan/backend/ClientState.hpp"
#include "orlan/backend/DeviceIdentity.hpp"
#include "orlan/backend/OrlanConfiguration.hpp"
#include "orlan/backend/RequestLayer.hpp"
#include "orlan/base/Single.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/DeviceInfo.hpp"
#include "orlan/platform/KeyValueStore.hpp"

namespace orlan {

/// Asks the transmission layer for the application's configuration and keeps the last good one in the store,
/// where a failure leaves it alone. Any thread.
class ConfigurationFetch {
 public:
  ConfigurationFetch(const ClientState& client, const DeviceIdentity& identity, const Bundle& bundle,
                     KeyValueStore& store, RequestLayer& requests, Logger& logger);

  /// As `APIService::fetchConfiguration` and `APIService::cachedConfiguration`.
  Single<OrlanConfiguration> fetch(bool forceRefresh);
  [[nodiscard]] std::optional<OrlanConfiguration> cached() const;

 private:
  [[nodiscard]] std::optional<OrlanConfiguration> usableCache();
  Single<OrlanConfiguration> request();
  Result<OrlanConfiguration> finish(const Result<HttpReply>& reply);

  const ClientState& client_;
  const DeviceIdentity& identity_;
  const Bundle& bundle_;
  KeyValueStore& store_;
  RequestLayer& requests_;
  Logger& logger_;
};

}  // namespace orlan
