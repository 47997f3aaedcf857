#include "tools/orlan/backend/Answers.hpp"

#include "orlan/base/text.hpp"
#include "tools/orlan/backend/CampaignGenerator.hpp"
#include "tools/orlan/backend/JsonCheck.hpp"

namespace orlan::devbackend {
namespace {

constexpr char privacyText[] =
    "This is a development backend. It keeps nothing but the record that its developer asked for, and "
    "forgets "
    "everything else when it ends.";

std::string registered(Devices& devices, const Request& request) {
  std::string device;
  std::string orlan;
  if (const auto document = json::Document::parse(request.body)) {
    device = stringMember(document->root(), "device_id").value_or("");
    orlan = stringMember(document->root(), "orlan_id").value_or("");
  }
  const auto identity = devices.identify(device, orlan);
  return json::print(
      json::Object{{"data", json::Object{{"device_id", identity.deviceId}, {"orlan_id", identity.orlanId}}}});
}

std::string configuration() {
  return json::print(json::Object{{"configuration", json::Object{{"notificationsCount", 20},
                                                                 {"daysCount", 7},
                                                                 {"batteryCount", 15},
                                                                 {"privacyText", privacyText}}}});
}

std::optional<Coordinate> callersPosition(const Request& request) {
  const auto document = json::Document::parse(request.body);
  if (!document) return std::nullopt;
  const auto degrees = [&](std::string_view key) {
    const auto value = stringMember(document->root(), key);
    return value ? text::toDouble(*value) : std::nullopt;
  };
  const auto latitude = degrees("latitude");
  const auto longitude = degrees("longitude");
  if (!latitude || !longitude) return std::nullopt;
  return Coordinate{*latitude, *longitude};
}

}  // namespace

Answer Answers::answer(Endpoint endpoint, const Request& request) {
  Answer answer;
  if (const auto file = files_.find(endpoint); file != files_.end()) {
    answer.body = file->second;
    if (!json::parse(answer.body)) answer.contentType = "text/plain; charset=utf-8";
    return answer;
  }
  switch (endpoint) {
    case Endpoint::registration:
      answer.body = registered(devices_, request);
      break;
    case Endpoint::configuration:
      answer.body = configuration();
      break;
    case Endpoint::geofenceCheck:
      answer.body = json::print(campaignsAround(callersPosition(request), push_));
      break;
    case Endpoint::segments:
    case Endpoint::activities:
    case Endpoint::pluginActivity:
    case Endpoint::surveyResponse:
      answer.body = R"({"status":"ok"})";
      break;
  }
  return answer;
}

Answer refusal(int status, const Problems& problems) {
  json::Array list(problems.begin(), problems.end());
  return {.status = status, .body = json::print(json::Object{{"problems", std::move(list)}})};
}

}  // namespace orlan::devbackend
