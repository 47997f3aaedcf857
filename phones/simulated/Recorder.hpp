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
  [[nodiscard]] std::vector<std::string> messages() const;

  void consoleLine(std::string_view level, std::string_view message) override;
  void systemLog(std::string_view message) override;
  void request(phone::RequestId id, const HttpRequest& request) override;
  void response(phone::RequestId id, const Result<HttpReply>& result) override;
  void storeWritten(std::string_view key, const json::Value& value) override;
  void storeRemoved(std::string_view key) override;
  void fileWritten(std::string_view name, std::size_t size) override;
  void fileRemoved(std::string_view name) override;
  void notificationScheduled(const NotificationRequest& request) override;
  void notificationRefused(const NotificationRequest& request, const Error& why) override;
  void notificationPresented(const NotificationRequest& request, std::uint32_t options) override;
  void notificationDelivered(const NotificationRequest& request) override;
  void notificationTapped(const NotificationResponse& response) override;
  void locationUpdates(std::string_view manager, bool running, double accuracy, double filter) override;
  void significantChanges(std::string_view manager, bool running) override;
  void region(phone::RegionAction action, const CircularRegion& region) override;
  void applicationSignal(ApplicationSignal signal, ApplicationState state) override;
  void remoteRegistration() override;
};

}  // namespace orlan::sim
