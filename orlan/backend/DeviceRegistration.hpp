#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "orlan/backend/calls.hpp"

namespace orlan {

/// Makes the device known to the backend, once per device and key, and remembers its identity.
class DeviceRegistration {
 public:
  using AuthPayload = APIService::AuthPayload;

  explicit DeviceRegistration(const calls::Context& with) : with_(with) {}

  /// As `APIService::registerDevice`.
  Single<AuthPayload> start(const std::string& apiKey, const std::vector<std::string>& segmentations);

  /// From now on the answer to a registration that is under way stores nothing.
  void abandon();

  [[nodiscard]] Publisher<AuthPayload>& authPublisher() { return *authSubject_; }

 private:
  struct Sent {
    std::uint64_t number;
    std::string apiKey;
    std::string segmentations;
    std::string token;
  };

  Single<AuthPayload> answerFromStore(const std::string& apiKey);
  Result<AuthPayload> finish(const Sent& sent, const Result<HttpReply>& reply);
  [[nodiscard]] bool keep(const Sent& sent, const AuthPayload& payload);

  const calls::Context& with_;
  std::mutex mutex_;
  std::uint64_t current_ = 0;  // guarded by mutex_, under which identities are stored
  // Shared: an answer handed out may pass on to it after the service has ended.
  const std::shared_ptr<Subject<AuthPayload>> authSubject_ = std::make_shared<Subject<AuthPayload>>();
};

}  // namespace orlan
