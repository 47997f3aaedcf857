#include <utility>

#include "orlan/backend/AnswerCheck.hpp"
#include "orlan/backend/Endpoints.hpp"
#include "orlan/backend/Errors.hpp"
#include "orlan/backend/LogBlocks.hpp"
#include "orlan/backend/StoreKeys.hpp"
#include "orlan/backend/calls.hpp"
#include "orlan/base/Fields.hpp"
#include "orlan/base/text.hpp"

namespace orlan {
namespace {

struct Segments {
  std::vector<std::string> segmentation;  // a list here, unlike in the device record
  std::string deviceRegisteredId;
};

Result<bool> finish(const calls::Context& with, const std::string& tags, const Result<HttpReply>& reply) {
  if (const auto checked = checkAnswer(reply, with.logger); !checked) return Unexpected(checked.error());
  const auto& body = reply->body;
  with.logger.log(body && text::isUtf8(*body) ? "Response body: " + *body : "No data received");
  with.phone.store.set(storeKeys::segments, tags);
  with.logger.log("✅ Segments Updated OK");
  return true;
}

}  // namespace

template <>
struct Fields<Segments> {
  using R = Segments;
  static constexpr std::tuple list{field("segmentation", &R::segmentation),
                                   field("device_registered_id", &R::deviceRegisteredId)};
};

Single<bool> calls::updateSegments(const Context& with, const std::vector<std::string>& segmentations) {
  const auto refused = [&](Error error) {
    return Single<bool>::of(Unexpected(logged(std::move(error), with.logger)));
  };
  HttpRequest request{.method = "POST", .url = with.client.platformUrl(endpoints::segments)};
  if (!with.requests.isUrl(request.url)) return refused(backendErrors::invalidUrl(request.url));
  request.addHeader("Content-Type", "application/json");
  request.addHeader("ApiKey", with.identity.apiKey());
  auto body = json::encodeText(Segments{segmentations, with.identity.registeredId()});
  if (!body) return refused(backendErrors::notSerializable());
  request.body = std::move(*body);
  with.logger.log(logBlocks::textRequest("🔄  Updating device segments", request));
  return with.requests.ask<bool>(
      std::move(request), [&with, tags = text::joined(segmentations, ",")](const Result<HttpReply>& reply) {
        return finish(with, tags, reply);
      });
}

}  // namespace orlan
