#include "phones/simulated/Recorder.hpp"

namespace orlan::sim {

std::vector<std::string> Recorder::messages() const {
  std::vector<std::string> all;
  all.reserve(lines.size());
  for (const auto& [level, message] : lines) all.push_back(message);
  return all;
}

void Recorder::consoleLine(std::string_view level, std::string_view message) {
  lines.emplace_back(level, message);
}

void Recorder::systemLog(std::string_view message) {
  systemLines.emplace_back(message);
}

void Recorder::request(phone::RequestId id, const HttpRequest& request) {
  requests.resize(id);
  requests[id - 1].request = request;
}

void Recorder::response(phone::RequestId id, const Result<HttpReply>& result) {
  if (id > requests.size()) requests.resize(id);
  requests[id - 1].result = result;
}

void Recorder::storeWritten(std::string_view key, const json::Value& value) {
  stored.emplace_back(key, value);
}

void Recorder::storeRemoved(std::string_view key) {
  stored.emplace_back(key, std::nullopt);
}

void Recorder::fileWritten(std::string_view name, std::size_t) {
  filesWritten.emplace_back(name);
}

void Recorder::fileRemoved(std::string_view name) {
  filesRemoved.emplace_back(name);
}

void Recorder::notificationScheduled(const NotificationRequest& request) {
  scheduled.push_back(request);
}

void Recorder::notificationRefused(const NotificationRequest& request, const Error&) {
  refused.push_back(request);
}

void Recorder::notificationPresented(const NotificationRequest& request, std::uint32_t options) {
  presented.push_back({request, options});
}

void Recorder::notificationDelivered(const NotificationRequest& request) {
  delivered.push_back(request);
}

void Recorder::notificationTapped(const NotificationResponse& response) {
  tapped.push_back(response);
}

void Recorder::locationUpdates(std::string_view manager, bool running, double, double) {
  updates.emplace_back(manager, running);
}

void Recorder::significantChanges(std::string_view manager, bool running) {
  significant.emplace_back(manager, running);
}

void Recorder::region(phone::RegionAction action, const CircularRegion& region) {
  regions.emplace_back(action, region.identifier);
}

void Recorder::applicationSignal(ApplicationSignal signal, ApplicationState state) {
  signals.emplace_back(signal, state);
}

void Recorder::remoteRegistration() {
  ++remoteRegistrations;
}

}  // namespace orlan::sim
