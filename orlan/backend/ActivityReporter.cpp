#include "orlan/backend/ActivityReporter.hpp"

#include <utility>

#include "orlan/backend/Endpoints.hpp"
#include "orlan/backend/LogBlocks.hpp"
#include "orlan/base/Time.hpp"
#include "orlan/base/json.hpp"
#include "orlan/base/text.hpp"
#include "orlan/campaigns/LocationTrackingReliability.hpp"

namespace orlan {
namespace {

json::Object eventData(const ActivityForm& form) {
  json::Object data;
  for (const auto& field : form) data.set(field.name, field.value);
  return data;
}

}  // namespace

ActivityForm activityForm(const ActivityReport& report, std::string deviceRegisteredID, std::string localTime,
                          Coordinate position) {
  return {{{"device_registered_id", std::move(deviceRegisteredID)},
           {"curated_notification_id", std::to_string(report.curatedNotificationID)},
           {"location_id", std::to_string(report.locationID)},
           {"type", std::string(wireName(report.type))},
           {"activity", std::string(wireName(report.activity))},
           {"time", std::move(localTime)},
           {"latitude", text::fromDouble(position.latitude)},
           {"longitude", text::fromDouble(position.longitude)}}};
}

ActivityReporter::ActivityReporter(const ClientState& client, const DeviceIdentity& identity, Clock& clock,
                                   RandomSource& random, RequestLayer& requests, Logger& logger,
                                   Lazy<LocationTrackingReliability>& reliability)
    : client_(client),
      identity_(identity),
      clock_(clock),
      random_(random),
      requests_(requests),
      logger_(logger),
      reliability_(reliability) {}

void ActivityReporter::report(const ActivityReport& report) {
  send(form(report, {-1.0, -1.0}), false);
}

void ActivityReporter::reportGeo(const ActivityReport& report, Coordinate position) {
  const auto form = this->form(report, position);
  reliability_->addPendingEvent("geo_activity", eventData(form),
                                LocationTrackingReliability::EventPriority::high);
  send(form, true);
}

ActivityForm ActivityReporter::form(const ActivityReport& report, Coordinate position) const {
  const auto now = clock_.now();
  return activityForm(report, identity_.registeredId(), localDateTime(now, clock_.offsetFromUtc(now)),
                      position);
}

void ActivityReporter::send(const ActivityForm& form, bool logsOutcome) {
  HttpRequest request{.method = "POST", .url = client_.platformUrl(endpoints::activities)};
  if (!requests_.isUrl(request.url)) return failed(urlErrors::badURL(), logsOutcome);
  const auto boundary = "Boundary-" + randomUuid(random_);
  request.addHeader("Content-Type", multipartContentType(boundary));
  request.addHeader("ApiKey", identity_.apiKey());
  request.body = multipartBody(boundary, form);
  logger_.breadcrumb(logBlocks::formRequest("📤  Uploading activity", request, form));
  requests_.send(std::move(request),
                 [this, logsOutcome](const Result<HttpReply>& reply) { finish(reply, logsOutcome); });
}

void ActivityReporter::finish(const Result<HttpReply>& reply, bool logsOutcome) {
  if (!reply) {
    logger_.breadcrumb("❌ sendEvent transport error: " + reply.error().description);
    return failed(reply.error(), logsOutcome);
  }
  if (!reply->status) {
    logger_.breadcrumb("❌ sendEvent: no HTTPURLResponse");
    return failed(urlErrors::badServerResponse(), logsOutcome);
  }
  logger_.breadcrumb(logBlocks::uploadResponse(*reply->status, *reply));
  if (!isSuccess(*reply->status)) return failed(urlErrors::badServerResponse(), logsOutcome);
  if (logsOutcome) logger_.breadcrumb("✅ Geo activity reported successfully");
}

void ActivityReporter::failed(const Error& error, bool logsOutcome) {
  if (logsOutcome) logger_.error("❌ Geo activity failed: " + error.description);
}

}  // namespace orlan
