#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "phones/common/PhoneObserver.hpp"

namespace orlan::test {

/// What the outside world saw, a readable line each, in order. Left out are the lines and writes of the
/// floors below: framed blocks, detection blocks, what the backend client says of an upload, pending events,
/// the log file.
class Transcript final : public phone::PhoneObserver {
 public:
  /// The lines since the last look.
  [[nodiscard]] std::vector<std::string> take() { return std::exchange(lines_, {}); }

  void note(std::string line) { lines_.push_back(std::move(line)); }

  void consoleLine(std::string_view level, std::string_view message) override {
    constexpr std::array<std::string_view, 6> below{"┌─",           "🔍",          "  - ", "✅ Geo activity",
                                                    "✅ Conversion", "❌ sendEvent"};
    if (std::any_of(below.begin(), below.end(), [&](auto opening) { return message.starts_with(opening); })) {
      return;
    }
    note(std::string(level) + " " + std::string(message));
  }

  void request(phone::RequestId, const HttpRequest& request) override {
    const std::string path = request.url.substr(request.url.find('/', 8));
    if (path != "/api/activities") return note(request.method + " " + path);
    note("report " + part(*request.body, "activity") + " as " + part(*request.body, "type") + " of " +
         part(*request.body, "curated_notification_id") + " at " + part(*request.body, "location_id") + " (" +
         part(*request.body, "latitude") + "," + part(*request.body, "longitude") + ")");
  }

  void storeWritten(std::string_view key, const json::Value& value) override {
    if (key.ends_with("Events")) return;
    const auto* bytes = value.bytes();
    note("store " + std::string(key) + " = " + (bytes ? bytes->data : json::print(value)));
  }
  void storeRemoved(std::string_view key) override { note("remove " + std::string(key)); }
  void fileWritten(std::string_view name, std::size_t) override {
    if (name != "orlan-sdk.log") note("file " + std::string(name));
  }

  void notificationScheduled(const NotificationRequest& request) override {
    note("scheduled " + request.content.title);
  }
  void locationUpdates(std::string_view manager, bool running, double accuracy, double filter) override {
    note("updates " + std::string(manager) + (running ? " on " : " off ") + std::to_string(int(accuracy)) +
         "/" + std::to_string(int(filter)));
  }

  void region(phone::RegionAction action, const CircularRegion& region) override {
    constexpr std::array<const char*, 4> words{"start", "stop", "enter", "exit"};
    note(std::string("region ") + words.at(static_cast<std::size_t>(action)) + " " + region.identifier);
  }

 private:
  static std::string part(const std::string& body, const std::string& name) {
    const std::string opening = "name=\"" + name + "\"\r\n\r\n";
    const auto from = body.find(opening);
    if (from == std::string::npos) return "(none)";
    const auto start = from + opening.size();
    return body.substr(start, body.find("\r\n", start) - start);
  }

  std::vector<std::string> lines_;
};

}  // namespace orlan::test
