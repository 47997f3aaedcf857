#pragma once

#include <vector>

#include "phones/common/PhoneObserver.hpp"

namespace orlan::phone {

/// Passes everything on to several observers, in the order in which they were added. Add them before the
/// phone is used from a second thread.
class PhoneObservers final : public PhoneObserver {
 public:
  void add(PhoneObserver& observer) { observers_.push_back(&observer); }

  void consoleLine(std::string_view level, std::string_view message) override;
  void systemLog(std::string_view message) override;
  void request(RequestId id, const HttpRequest& request) override;
  void response(RequestId id, const Result<HttpReply>& result) override;
  void storeWritten(std::string_view key, const json::Value& value) override;
  void storeRemoved(std::string_view key) override;
  void fileWritten(std::string_view name, std::size_t size) override;
  void fileRemoved(std::string_view name) override;
  void notificationScheduled(const NotificationRequest& request) override;
  void notificationRefused(const NotificationRequest& request, const Error& why) override;
  void notificationPresented(const NotificationRequest& request, std::uint32_t options) override;
  void notificationDelivered(const NotificationRequest& request) override;
  void notificationTapped(const NotificationResponse& response) override;
  void fixes(std::span<const Location> batch) override;
  void locationUpdates(std::string_view manager, bool running, double desiredAccuracy,
                       double distanceFilter) override;
  void significantChanges(std::string_view manager, bool running) override;
  void region(RegionAction action, const CircularRegion& region) override;
  void applicationSignal(ApplicationSignal signal, ApplicationState state) override;
  void remoteRegistration() override;

 private:
  std::vector<PhoneObserver*> observers_;
};

}  // namespace orlan::phone
