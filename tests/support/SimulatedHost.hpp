#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "orlan/base/text.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/Runtime.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan::test {

/// Everything that could be seen from outside, one short line each, in the order in which it happened.
class Chronicle final : public phone::PhoneObserver {
 public:
  std::vector<std::string> lines;
  std::vector<HttpRequest> requests;

  void add(std::string line) { lines.push_back(std::move(line)); }

  /// Only the lines that begin so, without that beginning.
  [[nodiscard]] std::vector<std::string> after(std::string_view beginning) const {
    std::vector<std::string> found;
    for (const std::string& line : lines) {
      if (line.starts_with(beginning)) found.push_back(line.substr(beginning.size()));
    }
    return found;
  }
  [[nodiscard]] bool has(std::string_view line) const {
    for (const std::string& seen : lines) {
      if (seen == line) return true;
    }
    return false;
  }

  // Of a block of several lines the first says which it is.
  void consoleLines(const ConsoleLines& printed) override {
    printed.forEach([this](const ConsoleLine& line) {
      add("log " + std::string(line.level) + " " +
          std::string(line.message.substr(0, line.message.find('\n'))));
    });
  }
  void systemLog(std::string_view message) override { add("system log " + std::string(message)); }
  void request(phone::RequestId, const HttpRequest& request) override {
    requests.push_back(request);
    add("request " + request.method + " " + request.url);
  }
  void storeWritten(std::string_view key, const json::Value& value) override {
    add("store " + std::string(key) + " = " + json::print(value));
  }
  void storeRemoved(std::string_view key) override { add("store " + std::string(key) + " removed"); }
  void fileWritten(std::string_view name, std::size_t) override { add("file " + std::string(name)); }
  void notificationScheduled(const NotificationRequest& request) override {
    add("notification " + request.content.title);
  }
  void locationUpdates(std::string_view manager, bool running, double accuracy, double filter) override {
    add("updates " + std::string(manager) + (running ? " on " : " off ") + text::fromDouble(accuracy) + " " +
        text::fromDouble(filter));
  }
  void significantChanges(std::string_view manager, bool running) override {
    add("significant changes " + std::string(manager) + (running ? " on" : " off"));
  }
};

class RecordingDelegate final : public OrlanPluginDelegate {
 public:
  explicit RecordingDelegate(Chronicle& chronicle) : chronicle_(chronicle) {}
  void didAuthenticate(OrlanPlugin&, const std::string& deviceID, const std::string& orlanID) override {
    chronicle_.add("delegate didAuthenticate " + deviceID + " " + orlanID);
  }
  void didFailWith(OrlanPlugin&, const Error& error) override {
    errors.push_back(error);
    chronicle_.add("delegate didFailWith " + error.description);
  }
  std::vector<Error> errors;

 private:
  Chronicle& chronicle_;
};

/// A host application on a simulated phone in a world of its own. Its backend registers devices (as D1 and
/// O1), takes reports, and knows of no campaigns until a test says otherwise.
class SimulatedHost {
 public:
  explicit SimulatedHost(sim::PhoneSettings settings = {}) : phone(world, std::move(settings)) {
    phone.observe(seen);
    phone.http().answer("POST", "/api/device-registerd/create",
                        {sim::HttpAnswer::reply(200, R"({"data":{"device_id":"D1","orlan_id":"O1"}})")});
    phone.http().answer("POST", "/api/plugin-activity/create", {sim::HttpAnswer::reply(200, "ok")});
    phone.http().answer("POST", "/api/activities", {sim::HttpAnswer::reply(200, "ok")});
    for (const char* path : {"/api/check-geofence", "/check-geofence"}) {
      phone.http().answer("POST", path,
                          {sim::HttpAnswer::reply(200, R"({"geoCampaign":[],"pushCampaign":[]})")});
    }
    launch();
  }

  [[nodiscard]] OrlanServices& services() { return runtime->services(); }
  [[nodiscard]] OrlanPlugin& plugin() { return *services().plugin; }

  /// Starts with an API key and lets everything due by then happen.
  void start(const std::string& apiKey = "KEY") {
    plugin().start(apiKey, Config::Environment::staging, {}, delegate);
    world.runFor(std::chrono::seconds(1));
  }

  void answerRegistration(sim::HttpAnswer answer) {
    phone.http().forget("POST", "/api/device-registerd/create");
    phone.http().answer("POST", "/api/device-registerd/create", {std::move(answer)});
  }

  /// The library's part of the process ends; the phone stays.
  void quit() {
    scope.reset();
    runtime.reset();
  }
  void launch() {
    runtime.emplace(phone.platform());
    scope.emplace(*runtime);
  }
  void relaunch(ApplicationState state = ApplicationState::active) {
    quit();
    phone.relaunch(state);
    launch();
  }

  sim::World world;
  sim::SimulatedPhone phone;
  Chronicle seen;
  std::shared_ptr<RecordingDelegate> delegate = std::make_shared<RecordingDelegate>(seen);
  std::optional<Runtime> runtime;
  std::optional<Runtime::Scope> scope;
};

}  // namespace orlan::test
