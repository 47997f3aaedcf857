#pragma once

#include <string>
#include <utility>
#include <vector>

#include "phones/common/PhoneObserver.hpp"

namespace orlan::sim {

/// Remembers what the outside world saw, for tests to look at. One thread.
class Recorder final : public phone::PhoneObserver {
 public:
  struct Request {
    HttpRequest request;
    std::optional<Result<HttpReply>> result;  // once it completed
  };
  struct Presentation {
    NotificationRequest request;
    std::uint32_t options = 0;
  };

  std::vector<std::pair<std::string, std::string>> lines;  // console: level, message
  std::vector<std::string> systemLines;
  std::vector<Request> requests;  // the request with id n is number n - 1
  std::vector<NotificationRequest> scheduled, refused, delivered;
  std::vector<Presentation> presented;
  std::vector<NotificationResponse> tapped;
  std::vector<std::pair<std::string, std::optional<json::Value>>> stored;  // removed: nothing
  std::vector<std::string> filesWritten, filesRemoved;
  std::vector<std::pair<phone::RegionAction, std::string>> regions;
  std::vector<std::pair<std::string, bool>> updates, significant;  // manager, running
  std::vector<std::pair<ApplicationSignal, ApplicationState>> signals;
  int remoteRegistrations = 0;

  /// The console's messages alone.
  [[nodiscard]] std::vector<std::string> messages() const {
    std::vector<std::string> all;
    all.reserve(lines.size());
    for (const auto& [level, message] : lines) all.push_back(message);
    return all;
  }

  void consoleLines(const ConsoleLines& printed) override {
    printed.forEach([this](const ConsoleLine& line) { lines.emplace_back(line.level, line.message); });
  }
  void systemLog(std::string_view message) override { systemLines.emplace_back(message); }
  void request(phone::RequestId id, const HttpRequest& request) override {
    requests.resize(id);
    requests[id - 1].request = request;
  }
  void response(phone::RequestId id, const Result<HttpReply>& result) override {
    if (id > requests.size()) requests.resize(id);
    requests[id - 1].result = result;
  }
  void storeWritten(std::string_view key, const json::Value& value) override {
    stored.emplace_back(key, value);
  }
  void storeRemoved(std::string_view key) override { stored.emplace_back(key, std::nullopt); }
  void fileWritten(std::string_view name, std::size_t) override { filesWritten.emplace_back(name); }
  void fileRemoved(std::string_view name) override { filesRemoved.emplace_back(name); }
  void notificationScheduled(const NotificationRequest& request) override { scheduled.push_back(request); }
  void notificationRefused(const NotificationRequest& request, const Error&) override {
    refused.push_back(request);
  }
  void notificationPresented(const NotificationRequest& request, std::uint32_t options) override {
    presented.push_back({request, options});
  }
  void notificationDelivered(const NotificationRequest& request) override { delivered.push_back(request); }
  void notificationTapped(const NotificationResponse& response) override { tapped.push_back(response); }
  void locationUpdates(std::string_view manager, bool running, double, double) override {
    updates.emplace_back(manager, running);
  }
  void significantChanges(std::string_view manager, bool running) override {
    significant.emplace_back(manager, running);
  }
  void region(phone::RegionAction action, const CircularRegion& region) override {
    regions.emplace_back(action, region.identifier);
  }
  void applicationSignal(ApplicationSignal signal, ApplicationState state) override {
    signals.emplace_back(signal, state);
  }
  void remoteRegistration() override { ++remoteRegistrations; }
};

}  // namespace orlan::sim
