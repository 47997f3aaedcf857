#pragma once

#include <string>
#include <vector>

#include "orlan/backend/ClientState.hpp"
#include "orlan/backend/DeviceIdentity.hpp"
#include "orlan/backend/RequestLayer.hpp"
#include "orlan/base/Single.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/KeyValueStore.hpp"

namespace orlan {

/// Replaces the device's segmentation tags, at the backend and, once that has agreed, in the store. Any
/// thread.
class SegmentsUpdate {
 public:
  SegmentsUpdate(const ClientState& client, const DeviceIdentity& identity, KeyValueStore& store,
                 RequestLayer& requests, Logger& logger);

  /// As `APIService::updateSegments`.
  Single<bool> send(const std::vector<std::string>& segmentations);

 private:
  Result<bool> finish(const std::string& tags, const Result<HttpReply>& reply);

  const ClientState& client_;
  const DeviceIdentity& identity_;
  KeyValueStore& store_;
  RequestLayer& requests_;
  Logger& logger_;
};

}  // namespace orlan
