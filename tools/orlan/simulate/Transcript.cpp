#include "tools/orlan/simulate/Transcript.hpp"

#include <array>
#include <utility>

#include "orlan/base/text.hpp"
#include "tools/orlan/simulate/valueForms.hpp"
#include "tools/orlan/simulate/words.hpp"

namespace orlan::simulate {
namespace {

/// In the order of `Event`.
constexpr auto events = std::to_array<std::string_view>(
    {"log", "system-log", "request", "response", "delegate", "publish", "result", "notification", "store",
     "file", "location-updates", "significant-changes", "region", "application", "remote-registration",
     "end"});
static_assert(events.size() == static_cast<std::size_t>(Transcript::Event::end) + 1);

/// Why a request brought no status: a word, or the fault's own.
std::string faultName(const Result<HttpReply>& result) {
  if (result) return "notHTTP";
  if (result.error() == urlErrors::timedOut()) return "timeout";
  if (result.error() == urlErrors::cannotConnectToHost()) return "unreachable";
  if (result.error() == urlErrors::cancelled()) return "cancelled";
  return result.error().description;
}

}  // namespace

std::span<const std::string_view> Transcript::eventNames() {
  return events;
}

Transcript::Transcript(Write write, std::set<std::string, std::less<>> only, Now now)
    : write_(std::move(write)), now_(std::move(now)) {
  for (std::size_t i = 0; i < events.size(); ++i) kept_[i] = only.empty() || only.contains(events[i]);
  kept_.set(static_cast<std::size_t>(Event::end));
}

/// `members` makes the event's members, when it is written at all.
template <class Members>
void Transcript::write(Event event, Members members) {
  if (!wants(event)) return;
  std::string line = R"({"at":)" + text::fixed(seconds(now_()), 3) + R"(,"event":)" +
                     json::print(events[static_cast<std::size_t>(event)]);
  const json::Object made = members();
  line += made.empty() ? "}" : "," + json::print(made).substr(1);
  write_(line + "\n");
}

void Transcript::consoleLines(const ConsoleLines& lines) {
  if (!wants(Event::log)) return;
  lines.forEach([this](const ConsoleLine& line) {
    write(Event::log, [&] { return json::Object{{"level", line.level}, {"message", line.message}}; });
  });
}

void Transcript::systemLog(std::string_view message) {
  write(Event::systemLog, [&] { return json::Object{{"message", message}}; });
}

void Transcript::request(phone::RequestId id, const HttpRequest& request) {
  write(Event::request, [&] {
    json::Array headers;
    for (const auto& [name, value] : request.headers) headers.push_back(json::Array{name, value});
    json::Object members{{"id", static_cast<std::int64_t>(id)},
                         {"method", request.method},
                         {"url", request.url},
                         {"headers", std::move(headers)}};
    if (request.body && !text::isUtf8(*request.body)) {
      members.set("bodyBase64", text::base64(*request.body));
    } else {
      members.set("body", request.body);
    }
    members.set("timeout", seconds(request.timeout));
    return members;
  });
}

void Transcript::response(phone::RequestId id, const Result<HttpReply>& result) {
  write(Event::response, [&] {
    json::Object members{{"id", static_cast<std::int64_t>(id)}};
    if (result && result->status) {
      members.set("status", *result->status);
    } else {
      members.set("error", faultName(result));
    }
    return members;
  });
}

void Transcript::storeWritten(std::string_view key, const json::Value& value) {
  write(Event::store, [&] { return json::Object{{"key", key}, {"value", value}}; });
}

void Transcript::storeRemoved(std::string_view key) {
  write(Event::store, [&] { return json::Object{{"key", key}, {"removed", true}}; });
}

void Transcript::fileWritten(std::string_view name, std::size_t size) {
  write(Event::file, [&] {
    return json::Object{{"name", name}, {"action", "written"}, {"size", static_cast<std::int64_t>(size)}};
  });
}

void Transcript::fileRemoved(std::string_view name) {
  write(Event::file, [&] { return json::Object{{"name", name}, {"action", "removed"}, {"size", nullptr}}; });
}

void Transcript::notification(std::string_view action, const NotificationRequest& request,
                              const json::Object& extra) {
  write(Event::notification, [&] {
    json::Object members{{"action", action},
                         {"identifier", request.identifier},
                         {"title", request.content.title},
                         {"body", request.content.body},
                         {"userInfo", request.content.userInfo},
                         {"delay", seconds(request.delay)}};
    for (const auto& [key, value] : extra) members.set(key, value);
    return members;
  });
}

void Transcript::notificationScheduled(const NotificationRequest& request) {
  notification("scheduled", request);
}

void Transcript::notificationRefused(const NotificationRequest& request, const Error&) {
  notification("refused", request);
}

void Transcript::notificationPresented(const NotificationRequest& request, std::uint32_t options) {
  notification("presented", request, {{"options", static_cast<std::int64_t>(options)}});
}

void Transcript::notificationDelivered(const NotificationRequest& request) {
  notification("delivered", request);
}

void Transcript::notificationTapped(const NotificationResponse& response) {
  notification("tapped", response.request);
}

void Transcript::locationUpdates(std::string_view manager, bool running, double desiredAccuracy,
                                 double distanceFilter) {
  write(Event::locationUpdates, [&] {
    return json::Object{{"manager", manager},
                        {"running", running},
                        {"desiredAccuracy", desiredAccuracy},
                        {"distanceFilter", distanceFilter}};
  });
}

void Transcript::significantChanges(std::string_view manager, bool running) {
  write(Event::significantChanges, [&] { return json::Object{{"manager", manager}, {"running", running}}; });
}

void Transcript::region(phone::RegionAction action, const CircularRegion& region) {
  write(Event::region, [&] {
    return json::Object{{"action", wordFor(regionActions, action)},
                        {"identifier", region.identifier},
                        {"latitude", region.circle.centre.latitude},
                        {"longitude", region.circle.centre.longitude},
                        {"radius", region.circle.radius}};
  });
}

void Transcript::applicationSignal(ApplicationSignal signal, ApplicationState state) {
  write(Event::application, [&] {
    return json::Object{{"signal", wordFor(applicationSignals, signal)},
                        {"state", wordFor(applicationStates, state)}};
  });
}

void Transcript::remoteRegistration() {
  write(Event::remoteRegistration, [] { return json::Object(); });
}

void Transcript::delegateCalled(std::string_view to, std::string_view method, json::Array arguments) {
  write(Event::delegate, [&] {
    return json::Object{{"to", to}, {"method", method}, {"arguments", std::move(arguments)}};
  });
}

void Transcript::published(std::string_view stream, json::Value value) {
  write(Event::publish, [&] { return json::Object{{"stream", stream}, {"value", std::move(value)}}; });
}

void Transcript::crossed(std::string_view stream, std::string_view monitor, json::Value value) {
  write(Event::publish, [&] {
    return json::Object{{"stream", stream}, {"monitor", monitor}, {"value", std::move(value)}};
  });
}

void Transcript::result(std::size_t step, std::string_view call, json::Value value) {
  write(Event::result, [&] {
    return json::Object{
        {"step", static_cast<std::int64_t>(step)}, {"call", call}, {"value", std::move(value)}};
  });
}

void Transcript::failed(std::size_t step, std::string_view call, const Error& error) {
  write(Event::result, [&] {
    return json::Object{{"step", static_cast<std::int64_t>(step)}, {"call", call}, {"error", formOf(error)}};
  });
}

void Transcript::ended(std::size_t steps) {
  write(Event::end, [&] { return json::Object{{"steps", static_cast<std::int64_t>(steps)}}; });
  ++silences_;
}

}  // namespace orlan::simulate
