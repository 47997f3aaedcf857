#include "phones/common/PhoneObservers.hpp"

namespace orlan::phone {

void PhoneObservers::consoleLine(std::string_view level, std::string_view message) {
  for (auto* each : observers_) each->consoleLine(level, message);
}

void PhoneObservers::systemLog(std::string_view message) {
  for (auto* each : observers_) each->systemLog(message);
}

void PhoneObservers::request(RequestId id, const HttpRequest& request) {
  for (auto* each : observers_) each->request(id, request);
}

void PhoneObservers::response(RequestId id, const Result<HttpReply>& result) {
  for (auto* each : observers_) each->response(id, result);
}

void PhoneObservers::storeWritten(std::string_view key, const json::Value& value) {
  for (auto* each : observers_) each->storeWritten(key, value);
}

void PhoneObservers::storeRemoved(std::string_view key) {
  for (auto* each : observers_) each->storeRemoved(key);
}

void PhoneObservers::fileWritten(std::string_view name, std::size_t size) {
  for (auto* each : observers_) each->fileWritten(name, size);
}

void PhoneObservers::fileRemoved(std::string_view name) {
  for (auto* each : observers_) each->fileRemoved(name);
}

void PhoneObservers::notificationScheduled(const NotificationRequest& request) {
  for (auto* each : observers_) each->notificationScheduled(request);
}

void PhoneObservers::notificationRefused(const NotificationRequest& request, const Error& why) {
  for (auto* each : observers_) each->notificationRefused(request, why);
}

void PhoneObservers::notificationPresented(const NotificationRequest& request, std::uint32_t options) {
  for (auto* each : observers_) each->notificationPresented(request, options);
}

void PhoneObservers::notificationDelivered(const NotificationRequest& request) {
  for (auto* each : observers_) each->notificationDelivered(request);
}

void PhoneObservers::notificationTapped(const NotificationResponse& response) {
  for (auto* each : observers_) each->notificationTapped(response);
}

void PhoneObservers::fixes(std::span<const Location> batch) {
  for (auto* each : observers_) each->fixes(batch);
}

void PhoneObservers::locationUpdates(std::string_view manager, bool running, double desiredAccuracy,
                                     double distanceFilter) {
  for (auto* each : observers_) each->locationUpdates(manager, running, desiredAccuracy, distanceFilter);
}

void PhoneObservers::significantChanges(std::string_view manager, bool running) {
  for (auto* each : observers_) each->significantChanges(manager, running);
}

void PhoneObservers::region(RegionAction action, const CircularRegion& region) {
  for (auto* each : observers_) each->region(action, region);
}

void PhoneObservers::applicationSignal(ApplicationSignal signal, ApplicationState state) {
  for (auto* each : observers_) each->applicationSignal(signal, state);
}

void PhoneObservers::remoteRegistration() {
  for (auto* each : observers_) each->remoteRegistration();
}

}  // namespace orlan::phone
