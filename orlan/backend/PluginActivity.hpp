#pragma once

#include <string>
#include <string_view>

#include "orlan/backend/ClientState.hpp"
#include "orlan/backend/DeviceIdentity.hpp"
#include "orlan/backend/RequestLayer.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/Clock.hpp"

namespace orlan {

/// Tells the platform what the library itself did. Outcomes are only logged. Any thread.
class PluginActivity {
 public:
  PluginActivity(const ClientState& client, const DeviceIdentity& identity, Clock& clock,
                 RequestLayer& requests, Logger& logger);

  void create(std::string_view activity, const std::string& apiKey, Config::Environment environment);

 private:
  [[nodiscard]] std::string body(std::string_view activity) const;
  void finish(const Result<HttpReply>& reply);

  const ClientState& client_;
  const DeviceIdentity& identity_;
  Clock& clock_;
  RequestLayer& requests_;
  Logger& logger_;
};

}  // namespace orlan
