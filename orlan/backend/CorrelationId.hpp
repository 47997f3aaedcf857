#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "orlan/backend/DeviceIdentity.hpp"
#include "orlan/backend/TokenSync.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/KeyValueStore.hpp"

namespace orlan {

/// The host's own name for this device's user. It travels in the device record, so each change sends that
/// again once the device is registered. Any thread.
class CorrelationId {
 public:
  CorrelationId(const DeviceIdentity& identity, KeyValueStore& store, TokenSync& tokens, Logger& logger);

  /// As the operations of `APIService`.
  void set(std::string_view identifier);
  void clear();
  [[nodiscard]] std::optional<std::string> get() const;

 private:
  void changed();

  const DeviceIdentity& identity_;
  KeyValueStore& store_;
  TokenSync& tokens_;
  Logger& logger_;
};

}  // namespace orlan
