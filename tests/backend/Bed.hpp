#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "orlan/backend/APIService.hpp"
#include "orlan/campaigns/LocationTrackingReliability.hpp"
#include "phones/simulated/SimulatedPhone.hpp"
#include "support/EchoHttp.hpp"

namespace orlan::test {

using Events = std::vector<std::string>;

constexpr char registrationPath[] = "/api/device-registerd/create";
inline const std::string registrationUrl =
    std::string("https://platform.staging.orlan.example") + registrationPath;

/// What the outside world sees of the client, in one list: "INFO …", "store KEY = JSON", "remove KEY",
/// "POST URL" and "response 200".
class Tape final : public phone::PhoneObserver {
 public:
  Events events;
  std::vector<HttpRequest> requests;

  void consoleLines(const ConsoleLines& lines) override {
    lines.forEach([this](const ConsoleLine& line) {
      events.push_back(std::string(line.level).append(" ").append(line.message));
    });
  }
  void storeWritten(std::string_view key, const json::Value& value) override {
    if (!key.starts_with("Orlan_"))
      events.push_back("store " + std::string(key) + " = " + json::print(value));
  }
  void storeRemoved(std::string_view key) override { events.push_back("remove " + std::string(key)); }
  void request(phone::RequestId, const HttpRequest& request) override {
    events.push_back(request.method + " " + request.url);
    requests.push_back(request);
  }
  void response(phone::RequestId, const Result<HttpReply>& result) override {
    events.push_back("response " + (!result          ? result.error().domain
                                    : result->status ? std::to_string(*result->status)
                                                     : "not HTTP"));
  }

  /// The events since the last call.
  Events take() { return std::exchange(events, {}); }
};

/// Takes no text for a URL.
class NowhereHttp final : public HttpClient {
 public:
  [[nodiscard]] bool isUrl(std::string_view) const override { return false; }
  [[nodiscard]] Subscription send(HttpRequest request, HttpDone) override {
    ADD_FAILURE() << request.url;
    return {};
  }
};

/// A client on a simulated phone whose clock stands at 2025-03-14 09:26:53 UTC.
struct Bed {
  explicit Bed(sim::PhoneSettings settings = {}, BaseUrls urls = BaseUrls::builtIn())
      : phone(world, std::move(settings)), urls_(std::move(urls)) {
    phone.observe(tape);
    launch();
  }

  void launch() {
    reliability.emplace([this] {
      const auto parts = phone.platform();
      return std::make_shared<LocationTrackingReliability>(parts.main, parts.queues, parts.clock,
                                                           parts.random, parts.store, logger);
    });
    api.emplace(phone.platform(), urls_, logger, *reliability);
  }
  void relaunch() {
    api.reset();
    phone.relaunch();
    launch();
  }

  static TimePoint start() {
    using namespace std::chrono;
    return sys_days(2025y / March / 14) + 9h + 26min + 53s;
  }

  /// Lets everything on its way arrive, and tells what happened since the last call.
  Events settle() {
    world.runFor(std::chrono::seconds(61));
    return tape.take();
  }

  sim::World world{{.start = start()}};
  sim::SimulatedPhone phone;
  Tape tape;
  Logger logger{phone.platform().clock, phone.platform().console, phone.platform().files,
                phone.platform().queues};
  std::optional<Lazy<LocationTrackingReliability>> reliability;
  std::optional<APIService> api;

 private:
  BaseUrls urls_;
};

/// Listens to one answer and notes it on the tape.
template <class T>
Subscription note(Bed& bed, const Single<T>& answer) {
  return answer.subscribe([&bed](const Result<T>& result) {
    if (!result) {
      const Error& error = result.error();
      bed.tape.events.push_back("fail " + error.domain + " " + std::to_string(error.code) + " " +
                                error.description);
    } else if constexpr (std::is_same_v<T, APIService::AuthPayload>) {
      bed.tape.events.push_back("deliver " + result->apiKey + " " + result->deviceID + " " + result->orlanID);
    } else {
      bed.tape.events.emplace_back("deliver");
    }
  });
}

/// The rules that close blocks.
inline std::string rule(int dashes) {
  std::string text = "\n└";
  for (int i = 0; i < dashes; ++i) text += "─";
  return text;
}

}  // namespace orlan::test
