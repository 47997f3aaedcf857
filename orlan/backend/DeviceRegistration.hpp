#pragma once

#include <memory>
#include <string>
#include <vector>

#include "orlan/backend/APIService.hpp"
#include "orlan/backend/ClientState.hpp"
#include "orlan/backend/DeviceIdentity.hpp"
#include "orlan/backend/DeviceRecord.hpp"
#include "orlan/backend/RequestLayer.hpp"
#include "orlan/backend/TokenSync.hpp"

namespace orlan {

/// Makes the device known to the backend, once per device and key, and remembers its identity.
class DeviceRegistration {
 public:
  using AuthPayload = APIService::AuthPayload;

  DeviceRegistration(ClientState& client, const DeviceIdentity& identity, const DeviceRecords& records,
                     KeyValueStore& store, RequestLayer& requests, TokenSync& tokens, Logger& logger);

  /// As `APIService::registerDevice`.
  Single<AuthPayload> start(const std::string& apiKey, const std::vector<std::string>& segmentations);

  [[nodiscard]] Publisher<AuthPayload>& registered() { return *registered_; }

 private:
  struct Sent {
    std::string apiKey;
    std::string segmentations;
    std::string token;
  };

  Single<AuthPayload> answerFromStore(const std::string& apiKey);
  Single<AuthPayload> send(Sent sent);
  Result<AuthPayload> finish(const Sent& sent, const Result<HttpReply>& reply);
  void keep(const Sent& sent, const AuthPayload& payload);

  ClientState& client_;
  const DeviceIdentity& identity_;
  const DeviceRecords& records_;
  KeyValueStore& store_;
  RequestLayer& requests_;
  TokenSync& tokens_;
  Logger& logger_;
  // Shared: an answer handed out may pass on to it after the service has ended.
  const std::shared_ptr<Subject<AuthPayload>> registered_ = std::make_shared<Subject<AuthPayload>>();
};

}  // namespace orlan
