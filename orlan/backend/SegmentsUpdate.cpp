#include "orlan/backend/SegmentsUpdate.hpp"

#include <utility>

#include "orlan/backend/AnswerCheck.hpp"
#include "orlan/backend/Endpoints.hpp"
#include "orlan/backend/Errors.hpp"
#include "orlan/backend/JsonBody.hpp"
#include "orlan/backend/LogBlocks.hpp"
#include "orlan/backend/StoreKeys.hpp"
#include "orlan/base/Fields.hpp"
#include "orlan/base/text.hpp"

namespace orlan {
namespace {

struct Segments {
  std::vector<std::string> segmentation;  // a list here, unlike in the device record
  std::string deviceRegisteredId;
};

}  // namespace

template <>
struct Fields<Segments> {
  using R = Segments;
  static constexpr std::tuple list{field("segmentation", &R::segmentation),
                                   field("device_registered_id", &R::deviceRegisteredId)};
};

SegmentsUpdate::SegmentsUpdate(const ClientState& client, const DeviceIdentity& identity,
                               KeyValueStore& store, RequestLayer& requests, Logger& logger)
    : client_(client), identity_(identity), store_(store), requests_(requests), logger_(logger) {}

Single<bool> SegmentsUpdate::send(const std::vector<std::string>& segmentations) {
  HttpRequest request{.method = "POST", .url = client_.platformUrl(endpoints::segments)};
  if (!requests_.isUrl(request.url)) {
    return Single<bool>::of(Unexpected(logged(backendErrors::invalidUrl(request.url), logger_)));
  }
  request.addHeader("Content-Type", "application/json");
  request.addHeader("ApiKey", identity_.apiKey());
  auto body = jsonBody(json::encode(Segments{segmentations, identity_.registeredId()}));
  if (!body) return Single<bool>::of(Unexpected(logged(backendErrors::notSerializable(), logger_)));
  request.body = std::move(*body);
  logger_.log(logBlocks::textRequest("🔄  Updating device segments", request));
  auto [answer, resolve] = Single<bool>::pending();
  requests_.send(std::move(request), [this, tags = text::joined(segmentations, ","),
                                      resolve = resolve](const Result<HttpReply>& reply) {
    requests_.deliver<bool>(resolve, finish(tags, reply));
  });
  return answer;
}

Result<bool> SegmentsUpdate::finish(const std::string& tags, const Result<HttpReply>& reply) {
  if (const auto checked = checkAnswer(reply, logger_); !checked) return Unexpected(checked.error());
  const auto& body = reply->body;
  logger_.log(body && text::isUtf8(*body) ? "Response body: " + *body : "No data received");
  store_.set(storeKeys::segments, tags);
  logger_.log("✅ Segments Updated OK");
  return true;
}

}  // namespace orlan
