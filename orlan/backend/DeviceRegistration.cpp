#include "orlan/backend/DeviceRegistration.hpp"

#include <utility>

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

DeviceRegistration::DeviceRegistration(ClientState& client, const DeviceIdentity& identity,
                                       const DeviceRecords& records, KeyValueStore& store,
                                       RequestLayer& requests, TokenSync& tokens, Logger& logger)
    : client_(client),
      identity_(identity),
      records_(records),
      store_(store),
      requests_(requests),
      tokens_(tokens),
      logger_(logger) {}

Single<APIService::AuthPayload> DeviceRegistration::start(const std::string& apiKey,
                                                          const std::vector<std::string>& segmentations) {
  if (identity_.isRegistered()) return answerFromStore(apiKey);
  return send({apiKey, text::joined(segmentations, ","), client_.pushToken()});
}

Single<APIService::AuthPayload> DeviceRegistration::answerFromStore(const std::string& apiKey) {
  AuthPayload payload{apiKey, identity_.deviceId(), identity_.orlanId()};
  client_.setAuthenticated();
  tokens_.sync(apiKey, false);
  return Single<AuthPayload>::of(std::move(payload))
      .passing([registered = std::weak_ptr(registered_)](const Result<AuthPayload>& answer) {
        if (const auto held = registered.lock()) held->send(*answer);
      });
}

Single<APIService::AuthPayload> DeviceRegistration::send(Sent sent) {
  auto request = deviceRecordRequest(client_.platformUrl(endpoints::deviceRecord),
                                     records_.forRegistration(sent.apiKey, sent.segmentations, sent.token));
  logger_.log(logBlocks::textRequest("🔒  Registering device", request));
  auto [answer, resolve] = Single<AuthPayload>::pending();
  requests_.send(std::move(request),
                 [this, sent = std::move(sent), resolve = resolve](const Result<HttpReply>& reply) {
                   requests_.deliver<AuthPayload>(resolve, finish(sent, reply));
                 });
  return answer;
}

Result<APIService::AuthPayload> DeviceRegistration::finish(const Sent& sent, const Result<HttpReply>& reply) {
  if (!reply) {
    logger_.error("HTTP request failed: " + reply.error().description);
    return Unexpected(reply.error());
  }
  if (!reply->status) return Unexpected(urlErrors::badServerResponse());
  logger_.log(logBlocks::response(*reply->status, *reply));
  if (!isSuccess(*reply->status)) return Unexpected(urlErrors::badServerResponse());

  const auto decoded = json::decodeText<Wrapper>(reply->body.value_or(""));
  if (!decoded) {
    logger_.error("Decoding error: " + decoded.error().description);
    return Unexpected(decoded.error());
  }
  AuthPayload payload{sent.apiKey, decoded->data.deviceID, decoded->data.orlanID};
  keep(sent, payload);
  client_.setAuthenticated();
  registered_->send(payload);
  logger_.log("✅ Device Registered OK");
  return payload;
}

void DeviceRegistration::keep(const Sent& sent, const AuthPayload& payload) {
  store_.set(storeKeys::deviceID, payload.deviceID);
  store_.set(storeKeys::orlanID, payload.orlanID);
  store_.set(storeKeys::apiKey, sent.apiKey);
  store_.set(storeKeys::deviceRegistered, true);
  store_.set(storeKeys::segments, sent.segmentations);
  store_.set(storeKeys::lastSyncedToken, sent.token);
}

}  // namespace orlan
