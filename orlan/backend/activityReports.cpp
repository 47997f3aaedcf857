#include <array>
#include <utility>

#include "orlan/backend/Endpoints.hpp"
#include "orlan/backend/LogBlocks.hpp"
#include "orlan/backend/calls.hpp"
#include "orlan/base/Time.hpp"
#include "orlan/base/json.hpp"
#include "orlan/base/text.hpp"
#include "orlan/campaigns/LocationTrackingReliability.hpp"

namespace orlan::calls {
namespace {

/// A report as the backend wants it.
using ActivityForm = std::array<FormField, 8>;

ActivityForm formOf(const Context& with, const ActivityReport& report) {
  const auto now = with.phone.clock.now();
  const auto position = report.position.value_or(Coordinate{-1.0, -1.0});
  return {{{"device_registered_id", with.identity.registeredId()},
           {"curated_notification_id", std::to_string(report.curatedNotificationID)},
           {"location_id", std::to_string(report.locationID)},
           {"type", std::string(wireName(report.type))},
           {"activity", std::string(wireName(report.activity))},
           {"time", localDateTime(now, with.phone.clock.offsetFromUtc(now))},
           {"latitude", text::fromDouble(position.latitude)},
           {"longitude", text::fromDouble(position.longitude)}}};
}

json::Object eventData(const ActivityForm& form) {
  json::Object data;
  for (const auto& field : form) data.set(field.name, field.value);
  return data;
}

void failed(const Context& with, const Error& error, bool logsOutcome) {
  if (logsOutcome) with.logger.error("❌ Geo activity failed: " + error.description);
}

void finish(const Context& with, const Result<HttpReply>& reply, bool logsOutcome) {
  if (!reply) {
    with.logger.breadcrumb("❌ sendEvent transport error: " + reply.error().description);
    return failed(with, reply.error(), logsOutcome);
  }
  if (!reply->status) {
    with.logger.breadcrumb("❌ sendEvent: no HTTPURLResponse");
    return failed(with, urlErrors::badServerResponse(), logsOutcome);
  }
  with.logger.breadcrumb(logBlocks::uploadResponse(*reply->status, *reply));
  if (!isSuccess(*reply->status)) return failed(with, urlErrors::badServerResponse(), logsOutcome);
  if (logsOutcome) with.logger.breadcrumb("✅ Geo activity reported successfully");
}

void sendEvent(const Context& with, const ActivityForm& form, bool logsOutcome) {
  HttpRequest request{.method = "POST", .url = with.client.platformUrl(endpoints::activities)};
  if (!with.requests.isUrl(request.url)) return failed(with, urlErrors::badURL(), logsOutcome);
  const auto boundary = "Boundary-" + randomUuid(with.phone.random);
  request.addHeader("Content-Type", multipartContentType(boundary));
  request.addHeader("ApiKey", with.identity.apiKey());
  request.body = multipartBody(boundary, form);
  with.logger.breadcrumb(logBlocks::formRequest("📤  Uploading activity", request, form));
  with.requests.send(std::move(request), [&with, logsOutcome](const Result<HttpReply>& reply) {
    finish(with, reply, logsOutcome);
  });
}

}  // namespace

void report(const Context& with, const ActivityReport& report) {
  const auto form = formOf(with, report);
  const bool isGeo = report.position.has_value();
  if (isGeo) {
    with.reliability->addPendingEvent("geo_activity", eventData(form),
                                      LocationTrackingReliability::EventPriority::high);
  }
  sendEvent(with, form, isGeo);
}

}  // namespace orlan::calls
