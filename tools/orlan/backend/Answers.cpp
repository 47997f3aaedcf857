#include "tools/orlan/backend/Answers.hpp"

#include <fmt/format.h>

#include "orlan/base/text.hpp"
#include "tools/orlan/backend/BodyForms.hpp"
#include "tools/orlan/backend/Campaigns.hpp"

namespace orlan::devbackend {
namespace {

constexpr char configuration[] =
    R"({"configuration":{"notificationsCount":20,"daysCount":7,"batteryCount":15,"privacyText":)"
    R"("This is a development backend. It keeps nothing but the record that its developer asked for, )"
    R"(and forgets everything else when it ends."}})";

std::optional<Coordinate> callersPosition(const Request& request) {
  const auto document = json::Document::parse(request.body);
  if (!document) return std::nullopt;
  const auto degrees = [&](std::string_view key) {
    const auto value = textMember(document->root(), key);
    return value ? text::toDouble(*value) : std::nullopt;
  };
  const auto latitude = degrees("latitude");
  const auto longitude = degrees("longitude");
  if (!latitude || !longitude) return std::nullopt;
  return Coordinate{*latitude, *longitude};
}

}  // namespace

std::string Answers::registered(const Request& request) {
  std::string device;
  std::string orlan;
  if (const auto document = json::Document::parse(request.body)) {
    device = textMember(document->root(), "device_id").value_or("");
    orlan = textMember(document->root(), "orlan_id").value_or("");
  }
  if (!device.starts_with("device-")) device.insert(0, "device-");
  orlan = identify(device, orlan);
  return json::print(json::Object{{"data", json::Object{{"device_id", device}, {"orlan_id", orlan}}}});
}

/// A device gets the same identity each time, also when it comes back under the identifier that it was given,
/// and keeps the one that an earlier backend gave it (`known`; "0": none yet).
std::string Answers::identify(const std::string& device, std::string_view known) {
  const std::scoped_lock lock(mutex_);
  auto& identity = identities_[device];
  if (!identity.empty()) return identity;
  if (known.empty() || known == "0") return identity = fmt::format("{}", next_++);
  const auto number = text::toInteger(known).value_or(0);
  if (number >= next_ && number < INT64_MAX) next_ = number + 1;
  return identity = known;
}

Reply Answers::answer(Endpoint endpoint, const Request& request) {
  Reply reply{.contentType = "application/json"};
  if (const auto file = files_.find(endpoint); file != files_.end()) {
    reply.body = file->second;
    if (!json::parse(reply.body)) reply.contentType = "text/plain; charset=utf-8";
  } else if (endpoint == Endpoint::registration) {
    reply.body = registered(request);
  } else if (endpoint == Endpoint::configuration) {
    reply.body = configuration;
  } else if (endpoint == Endpoint::geofenceCheck) {
    reply.body = json::print(campaignsAround(callersPosition(request), push_));
  } else {
    reply.body = R"({"status":"ok"})";
  }
  return reply;
}

Reply refusal(int status, const Problems& problems) {
  json::Array list(problems.begin(), problems.end());
  return {.status = status,
          .contentType = "application/json",
          .body = json::print(json::Object{{"problems", std::move(list)}})};
}

}  // namespace orlan::devbackend
