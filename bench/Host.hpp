#pragma once

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/TimedLoop.hpp"
#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/Runtime.hpp"
#include "phones/common/PhoneObserver.hpp"
#include "phones/linux/DiskFiles.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan::bench {

/// An application with the library on a simulated phone whose files are on the disk, like the real phone's:
/// in virtual time, on one thread.
class Host {
 public:
  /// `answers` are those to the questions for campaigns, one after the other, each ten seconds late.
  Host(const std::string& cachesDirectory, Coordinate position, const std::vector<std::string>& answers)
      : phone_(world_, settings(position)),
        network_(phone_.http(), answers),
        files_(cachesDirectory, nobody_) {
    using sim::HttpAnswer;
    phone_.http().answer("POST", "/api/device-registerd/create",
                         {HttpAnswer::reply(200, R"({"data":{"device_id":"D1","orlan_id":"O1"}})")});
    phone_.http().answer("POST", "/api/plugin-activity/create", {HttpAnswer::reply(200, "ok")});
    phone_.http().answer("POST", "/api/check-geofence",
                         {HttpAnswer::reply(200, "").after(std::chrono::seconds(10))});
  }

  /// The process starts, the host calls `start`, the device is registered and campaigns are asked for.
  void launch() {
    loop_.turn([&] {
      runtime_.emplace(platform());
      scope_.emplace(*runtime_);
      runtime_->services().plugin->start("KEY", Config::Environment::staging, {}, delegate_);
    });
    world_.runFor(std::chrono::seconds(5));
  }

  void waitForAnswer() { world_.runFor(std::chrono::seconds(10)); }

  void refetch() {
    loop_.turn([&] { runtime_->services().geofence->refetch(); });
    waitForAnswer();
  }

  void moveTo(ApplicationState state) {
    loop_.turn([&] { phone_.application().moveTo(state); });
    world_.runFor(std::chrono::seconds(5));
  }

  [[nodiscard]] std::size_t polygons() { return runtime_->services().geofence->currentPolygons().size(); }

  [[nodiscard]] TimedLoop& loop() { return loop_; }

 private:
  struct Delegate final : OrlanPluginDelegate {};

  /// The simulated network, but that an answer about campaigns comes into being when it arrives, on the queue
  /// of answers: the simulated one makes it inside the call that asks.
  class Network final : public HttpClient {
   public:
    Network(HttpClient& simulated, std::vector<std::string> answers)
        : simulated_(simulated), answers_(std::move(answers)) {}

    [[nodiscard]] bool isUrl(std::string_view text) const override { return simulated_.isUrl(text); }
    [[nodiscard]] Subscription send(HttpRequest request, HttpDone done) override {
      const bool asksForCampaigns = request.url.ends_with("/check-geofence");
      return simulated_.send(std::move(request), [=, this, done = std::move(done)](Result<HttpReply> reply) {
        if (asksForCampaigns && reply) reply->body = answers_[std::min(next_++, answers_.size() - 1)];
        done(std::move(reply));
      });
    }

   private:
    HttpClient& simulated_;
    const std::vector<std::string> answers_;
    std::size_t next_ = 0;
  };

  static sim::PhoneSettings settings(Coordinate position) {
    sim::PhoneSettings settings;
    settings.location.position = Location{position, 5.0, {}};
    return settings;
  }

  Platform platform() {
    const Platform phone = phone_.platform();
    return {loop_,        phone.queues, phone.clock,     phone.random,        phone.store,
            files_,       network_,     phone.locations, phone.notifications, phone.application,
            phone.device, phone.bundle, phone.console,   phone.systemLog};
  }

  sim::World world_;
  sim::SimulatedPhone phone_;
  Network network_;
  TimedLoop loop_{phone_.platform().main};
  phone::PhoneObserver nobody_;
  linuxphone::DiskFiles files_;
  std::shared_ptr<Delegate> delegate_ = std::make_shared<Delegate>();
  std::optional<Runtime> runtime_;
  std::optional<Runtime::Scope> scope_;
};

}  // namespace orlan::bench
