#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "orlan/backend/ClientState.hpp"
#include "orlan/backend/DeviceRecord.hpp"
#include "orlan/backend/RequestLayer.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/KeyValueStore.hpp"

namespace orlan {

/// Which token to send, if any: one that the backend has not seen, or, when forced, the one it has seen last
/// if there is no other ("pending" is none).
[[nodiscard]] std::optional<std::string> tokenToSync(std::string_view current,
                                                     const std::optional<std::string>& lastSynced,
                                                     bool force);

/// Keeps the backend's copy of the device's push token current. Outcomes are only logged. Any thread.
class TokenSync {
 public:
  TokenSync(const ClientState& client, const DeviceRecords& records, KeyValueStore& store,
            RequestLayer& requests, Logger& logger);

  /// Sends the device record again when `tokenToSync` has a token for it; `force` when something else in the
  /// record has changed.
  void sync(const std::string& apiKey, bool force);

 private:
  [[nodiscard]] Config::Environment environment() const;
  void finish(const std::string& token, const Result<HttpReply>& reply);

  const ClientState& client_;
  const DeviceRecords& records_;
  KeyValueStore& store_;
  RequestLayer& requests_;
  Logger& logger_;
};

}  // namespace orlan
