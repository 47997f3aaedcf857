#include "orlan/backend/DeviceRegistration.hpp"

#include <utility>

#include "orlan/backend/DeviceRecord.hpp"
#include "orlan/backend/Endpoints.hpp"
#include "orlan/backend/LogBlocks.hpp"
#include "orlan/backend/StoreKeys.hpp"
#include "orlan/base/Fields.hpp"
#include "orlan/base/text.hpp"

namespace orlan {
namespace {

struct Identifiers {
  std::string deviceID;
  std::string orlanID;
};

struct Wrapper {
  Identifiers data;
};

}  // namespace

template <>
struct Fields<Identifiers> {
  using R = Identifiers;
  static constexpr std::tuple list{field("device_id", &R::deviceID), field("orlan_id", &R::orlanID)};
};

template <>
struct Fields<Wrapper> {
  using R = Wrapper;
  static constexpr std::tuple list{field("data", &R::data)};
};

Single<APIService::AuthPayload> DeviceRegistration::start(const std::string& apiKey,
                                                          const std::vector<std::string>& segmentations) {
  if (with_.identity.isRegistered()) return answerFromStore(apiKey);
  Sent sent{0, apiKey, text::joined(segmentations, ","), with_.client.currentPushToken()};
  {
    const std::lock_guard lock(mutex_);
    sent.number = ++current_;
  }
  const auto record = registrationRecord(with_, apiKey, sent.segmentations, sent.token);
  auto request = deviceRecordRequest(with_.client.platformUrl(endpoints::deviceRecord), record,
                                     json::print(json::encode(record)));
  with_.logger.log(logBlocks::textRequest("🔒  Registering device", request));
  return with_.requests.ask<AuthPayload>(
      std::move(request),
      [this, sent = std::move(sent)](const Result<HttpReply>& reply) { return finish(sent, reply); });
}

void DeviceRegistration::abandon() {
  const std::lock_guard lock(mutex_);
  ++current_;
}

Single<APIService::AuthPayload> DeviceRegistration::answerFromStore(const std::string& apiKey) {
  AuthPayload payload{apiKey, with_.identity.deviceId(), with_.identity.orlanId()};
  with_.client.setAuthenticated();
  calls::syncToken(with_, apiKey, false);
  return Single<AuthPayload>::of(std::move(payload))
      .passing([subject = std::weak_ptr(authSubject_)](const Result<AuthPayload>& answer) {
        if (const auto held = subject.lock()) held->send(*answer);
      });
}

Result<APIService::AuthPayload> DeviceRegistration::finish(const Sent& sent, const Result<HttpReply>& reply) {
  Logger& logger = with_.logger;
  if (!reply) {
    logger.error("HTTP request failed: " + reply.error().description);
    return Unexpected(reply.error());
  }
  if (!reply->status) return Unexpected(urlErrors::badServerResponse());
  logger.log(logBlocks::response(*reply->status, *reply));
  if (!isSuccess(*reply->status)) return Unexpected(urlErrors::badServerResponse());

  const auto decoded = json::decodeText<Wrapper>(reply->body.value_or(""));
  if (!decoded) {
    logger.error("Decoding error: " + decoded.error().description);
    return Unexpected(decoded.error());
  }
  AuthPayload payload{sent.apiKey, decoded->data.deviceID, decoded->data.orlanID};
  if (!keep(sent, payload)) return Unexpected(urlErrors::cancelled());
  with_.client.setAuthenticated();
  authSubject_->send(payload);
  logger.log("✅ Device Registered OK");
  return payload;
}

/// Unless a later start has taken this registration's place: the identity would be another key's.
bool DeviceRegistration::keep(const Sent& sent, const AuthPayload& payload) {
  const std::lock_guard lock(mutex_);
  if (sent.number != current_) return false;
  KeyValueStore& store = with_.phone.store;
  store.set(storeKeys::deviceID, payload.deviceID);
  store.set(storeKeys::orlanID, payload.orlanID);
  store.set(storeKeys::apiKey, sent.apiKey);
  store.set(storeKeys::deviceRegistered, true);
  store.set(storeKeys::segments, sent.segmentations);
  store.set(storeKeys::lastSyncedToken, sent.token);
  return true;
}

}  // namespace orlan
