#include "orlan/geofence/GeofenceRequest.hpp"

#include <fmt/format.h>

#include "orlan/base/json.hpp"
#include "orlan/base/text.hpp"

namespace orlan {

GeofenceRequest GeofenceRequest::of(const Question& question) {
  const std::string latitude = text::fromDouble(question.position.latitude);
  const std::string longitude = text::fromDouble(question.position.longitude);
  const std::string segments = text::joined(question.segments, ",");

  HttpRequest http{.method = "POST", .url = question.baseUrl + "/check-geofence"};
  http.addHeader("Content-Type", "application/json");
  http.addHeader("Accept", "application/json");
  addTransmissionHeaders(http, question.credentials);
  http.body = json::print(json::Object{
      {"latitude", latitude}, {"longitude", longitude}, {"segmentationTags", segments}, {"distance", 10}});

  const std::string_view scheme = question.credentials.isComplete() ? "app-scoped" : "legacy";
  return {std::move(http), fmt::format("🌐 /check-geofence ({}) [{} auth] → {},{} | segments: {}",
                                       question.reason, scheme, latitude, longitude, segments)};
}

}  // namespace orlan
