#include "tools/orlan/simulate/Transcript.hpp"

#include <array>
#include <utility>

#include "orlan/base/text.hpp"
#include "tools/orlan/simulate/valueForms.hpp"
#include "tools/orlan/simulate/words.hpp"

namespace orlan::simulate {
namespace {

constexpr auto events = std::to_array<std::string_view>(
    {"log", "system-log", "request", "response", "delegate", "publish", "result", "notification", "store",
     "file", "location-updates", "significant-changes", "region", "application", "remote-registration",
     "end"});

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
    : write_(std::move(write)), only_(std::move(only)), now_(std::move(now)) {}

bool Transcript::wants(std::string_view event) const {
  return silences_ == 0 && (only_.empty() || event == "end" || only_.contains(event));
}

void Transcript::write(std::string_view event, const json::Object& members) {
  if (!wants(event)) return;
  std::string line = R"({"at":)" + text::fixed(seconds(now_()), 3) + R"(,"event":)" + json::print(event);
  line += members.empty() ? "}" : "," + json::print(members).substr(1);
  write_(line + "\n");
}

void Transcript::consoleLines(const ConsoleLines& lines) {
  if (!wants("log")) return;
  lines.forEach([this](const ConsoleLine& line) {
    write("log", {{"level", line.level}, {"message", line.message}});
  });
}

void Transcript::systemLog(std::string_view message) {
  write("system-log", {{"message", message}});
}

void Transcript::request(phone::RequestId id, const HttpRequest& request) {
  if (!wants("request")) return;
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
  write("request", members);
}

void Transcript::response(phone::RequestId id, const Result<HttpReply>& result) {
  json::Object members{{"id", static_cast<std::int64_t>(id)}};
  if (result && result->status) {
    members.set("status", *result->status);
  } else {
    members.set("error", faultName(result));
  }
  write("response", members);
}

void Transcript::storeWritten(std::string_view key, const json::Value& value) {
  write("store", {{"key", key}, {"value", value}});
}

void Transcript::storeRemoved(std::string_view key) {
  write("store", {{"key", key}, {"removed", true}});
}

void Transcript::fileWritten(std::string_view name, std::size_t size) {
  write("file", {{"name", name}, {"action", "written"}, {"size", static_cast<std::int64_t>(size)}});
}

void Transcript::fileRemoved(std::string_view name) {
  write("file", {{"name", name}, {"action", "removed"}, {"size", nullptr}});
}

void Transcript::notification(std::string_view action, const NotificationRequest& request,
                              const json::Object& extra) {
  json::Object members{{"action", action},
                       {"identifier", request.identifier},
                       {"title", request.content.title},
                       {"body", request.content.body},
                       {"userInfo", request.content.userInfo},
                       {"delay", seconds(request.delay)}};
  for (const auto& [key, value] : extra) members.set(key, value);
  write("notification", members);
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
  write("location-updates", {{"manager", manager},
                             {"running", running},
                             {"desiredAccuracy", desiredAccuracy},
                             {"distanceFilter", distanceFilter}});
}

void Transcript::significantChanges(std::string_view manager, bool running) {
  write("significant-changes", {{"manager", manager}, {"running", running}});
}

void Transcript::region(phone::RegionAction action, const CircularRegion& region) {
  write("region", {{"action", wordFor(regionActions, action)},
                   {"identifier", region.identifier},
                   {"latitude", region.circle.centre.latitude},
                   {"longitude", region.circle.centre.longitude},
                   {"radius", region.circle.radius}});
}

void Transcript::applicationSignal(ApplicationSignal signal, ApplicationState state) {
  write("application",
        {{"signal", wordFor(applicationSignals, signal)}, {"state", wordFor(applicationStates, state)}});
}

void Transcript::remoteRegistration() {
  write("remote-registration", {});
}

void Transcript::delegateCalled(std::string_view to, std::string_view method, json::Array arguments) {
  write("delegate", {{"to", to}, {"method", method}, {"arguments", std::move(arguments)}});
}

void Transcript::published(std::string_view stream, json::Value value) {
  write("publish", {{"stream", stream}, {"value", std::move(value)}});
}

void Transcript::crossed(std::string_view stream, std::string_view monitor, json::Value value) {
  write("publish", {{"stream", stream}, {"monitor", monitor}, {"value", std::move(value)}});
}

void Transcript::result(std::size_t step, std::string_view call, json::Value value) {
  write("result", {{"step", static_cast<std::int64_t>(step)}, {"call", call}, {"value", std::move(value)}});
}

void Transcript::failed(std::size_t step, std::string_view call, const Error& error) {
  write("result", {{"step", static_cast<std::int64_t>(step)}, {"call", call}, {"error", formOf(error)}});
}

void Transcript::ended(std::size_t steps) {
  write("end", {{"steps", static_cast<std::int64_t>(steps)}});
  ++silences_;
}

}  // namespace orlan::simulate
