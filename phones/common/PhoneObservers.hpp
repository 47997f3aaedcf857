#pragma once

#include <vector>

#include "phones/common/PhoneObserver.hpp"

namespace orlan::phone {

/// Passes everything on to several observers, in the order in which they were added. Add them before the
/// phone is used from a second thread.
class PhoneObservers final : public PhoneObserver {
 public:
  void add(PhoneObserver& observer) { observers_.push_back(&observer); }

  void consoleLines(const ConsoleLines& lines) override { tell(&PhoneObserver::consoleLines, lines); }
  void systemLog(std::string_view message) override { tell(&PhoneObserver::systemLog, message); }
  void request(RequestId id, const HttpRequest& request) override {
    tell(&PhoneObserver::request, id, request);
  }
  void response(RequestId id, const Result<HttpReply>& result) override {
    tell(&PhoneObserver::response, id, result);
  }
  void storeWritten(std::string_view key, const json::Value& value) override {
    tell(&PhoneObserver::storeWritten, key, value);
  }
  void storeRemoved(std::string_view key) override { tell(&PhoneObserver::storeRemoved, key); }
  void fileWritten(std::string_view name, std::size_t size) override {
    tell(&PhoneObserver::fileWritten, name, size);
  }
  void fileRemoved(std::string_view name) override { tell(&PhoneObserver::fileRemoved, name); }
  void notificationScheduled(const NotificationRequest& request) override {
    tell(&PhoneObserver::notificationScheduled, request);
  }
  void notificationRefused(const NotificationRequest& request, const Error& why) override {
    tell(&PhoneObserver::notificationRefused, request, why);
  }
  void notificationPresented(const NotificationRequest& request, std::uint32_t options) override {
    tell(&PhoneObserver::notificationPresented, request, options);
  }
  void notificationDelivered(const NotificationRequest& request) override {
    tell(&PhoneObserver::notificationDelivered, request);
  }
  void notificationTapped(const NotificationResponse& response) override {
    tell(&PhoneObserver::notificationTapped, response);
  }
  void fixes(std::span<const Location> batch) override { tell(&PhoneObserver::fixes, batch); }
  void locationUpdates(std::string_view manager, bool running, double desiredAccuracy,
                       double distanceFilter) override {
    tell(&PhoneObserver::locationUpdates, manager, running, desiredAccuracy, distanceFilter);
  }
  void significantChanges(std::string_view manager, bool running) override {
    tell(&PhoneObserver::significantChanges, manager, running);
  }
  void region(RegionAction action, const CircularRegion& region) override {
    tell(&PhoneObserver::region, action, region);
  }
  void applicationSignal(ApplicationSignal signal, ApplicationState state) override {
    tell(&PhoneObserver::applicationSignal, signal, state);
  }
  void remoteRegistration() override { tell(&PhoneObserver::remoteRegistration); }

 private:
  template <class... Parameters, class... Arguments>
  void tell(void (PhoneObserver::*what)(Parameters...), const Arguments&... arguments) {
    for (auto* each : observers_) (each->*what)(arguments...);
  }

  std::vector<PhoneObserver*> observers_;
};

}  // namespace orlan::phone
