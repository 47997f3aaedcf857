#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "orlan/backend/APIService.hpp"
#include "orlan/base/Lazy.hpp"
#include "orlan/campaigns/LocationTrackingReliability.hpp"
#include "orlan/geofence/ReactionServices.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan::test {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

/// What the outside world saw, a readable line each, in order; of a block of several lines the first. Left
/// out is what the floors below say and write.
class Transcript final : public phone::PhoneObserver {
 public:
  /// The lines since the last look.
  [[nodiscard]] Lines take() { return std::exchange(lines_, {}); }

  void note(std::string line) { lines_.push_back(std::move(line)); }

  void consoleLines(const ConsoleLines& lines) override {
    lines.forEach([this](const ConsoleLine& line) { consoleLine(line.level, line.message); });
  }
  void consoleLine(std::string_view level, std::string_view message) {
    constexpr std::array<std::string_view, 6> below{"┌─",           "🔍 Polygon",  "  - ", "✅ Geo activity",
                                                    "✅ Conversion", "❌ sendEvent"};
    if (std::any_of(below.begin(), below.end(), [&](auto opening) { return message.starts_with(opening); })) {
      return;
    }
    note(std::string(level) + " " + std::string(message.substr(0, message.find('\n'))));
  }
  void systemLog(std::string_view message) override { note("system " + std::string(message)); }

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
  void remoteRegistration() override { note("remote registration"); }
  void locationUpdates(std::string_view manager, bool running, double, double) override {
    note("updates " + std::string(manager) + (running ? " on" : " off"));
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

  Lines lines_;
};

/// A simulated phone and what the floors below the facade need, at 2026-01-01 00:00:00 UTC (788918400 s since
/// 2001). Stands where the facade is.
struct FloorHost : NotificationCounter {
  explicit FloorHost(sim::PhoneSettings settings = {}) : phone(world, std::move(settings)) {
    phone.observe(transcript);
    phone.http().answer("POST", "/api/activities", {sim::HttpAnswer::reply(200, "{}")});
  }
  void recordFGNotification(std::string_view activation) override {
    transcript.note("count FG " + std::string(activation));
  }
  void recordBGNotification(std::string_view activation) override {
    transcript.note("count BG " + std::string(activation));
  }

  [[nodiscard]] ReactionServices services() {
    return {platform.clock, platform.store, platform.notifications, platform.random, logger, api, *this};
  }

  /// What happened since the last look, all that is due now included.
  [[nodiscard]] Lines seen() {
    world.settle();
    return transcript.take();
  }
  [[nodiscard]] Lines seenAfter(Duration time) {
    world.runFor(time);
    return seen();
  }

  sim::World world;
  Transcript transcript;
  sim::SimulatedPhone phone;
  Platform platform = phone.platform();
  Logger logger{platform.clock, platform.console, platform.files, platform.queues};
  Lazy<LocationTrackingReliability> reliability{[this] {
    return std::make_shared<LocationTrackingReliability>(platform.main, platform.queues, platform.clock,
                                                         platform.random, platform.store, logger);
  }};
  Lazy<APIService> api{
      [this] { return std::make_shared<APIService>(platform, BaseUrls::builtIn(), logger, reliability); }};
};

}  // namespace orlan::test
