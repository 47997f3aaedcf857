#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "orlan/backend/APIService.hpp"
#include "orlan/campaigns/LocationTrackingReliability.hpp"
#include "orlan/notifications/NotificationManager.hpp"
#include "orlan/notifications/NotificationPermissionManager.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan::test {

using Lines = std::vector<std::string>;

/// What the outside world saw, in order. Of a block of several lines the first; the backend client's own
/// lines are left out.
class Tape final : public phone::PhoneObserver {
 public:
  [[nodiscard]] Lines take() { return std::exchange(lines_, {}); }
  void note(std::string line) { lines_.push_back(std::move(line)); }

  void consoleLine(std::string_view level, std::string_view message) override {
    if (message.starts_with("┌─")) return;
    note(std::string(level) + " " + std::string(message.substr(0, message.find('\n'))));
  }
  void systemLog(std::string_view message) override { note("system " + std::string(message)); }
  void request(phone::RequestId, const HttpRequest& request) override {
    note("report " + part(*request.body, "activity") + " as " + part(*request.body, "type") + " of " +
         part(*request.body, "curated_notification_id") + " at " + part(*request.body, "location_id"));
  }
  void notificationScheduled(const NotificationRequest& request) override { scheduled.push_back(request); }
  void notificationPresented(const NotificationRequest&, std::uint32_t options) override {
    note("shown " + std::to_string(options));
  }
  void remoteRegistration() override { note("remote registration"); }

  std::vector<NotificationRequest> scheduled;

 private:
  static std::string part(const std::string& body, const std::string& name) {
    const auto from = body.find("name=\"" + name + "\"\r\n\r\n") + name.size() + 11;
    return body.substr(from, body.find("\r\n", from) - from);
  }

  Lines lines_;
};

struct Campaigns final : CampaignSource {
  explicit Campaigns(Tape& tape) : tape_(tape) {}
  [[nodiscard]] std::shared_ptr<const CampaignData> current() override {
    tape_.note("looked at the campaigns");
    return data;
  }

  std::shared_ptr<const CampaignData> data;

 private:
  Tape& tape_;
};

/// A simulated phone with the notification handling and the floors below it.
struct NotificationBed {
  explicit NotificationBed(phone::NotificationSettings settings = {})
      : phone(world, {.notifications = std::move(settings)}) {
    phone.observe(tape);
    phone.http().answer("POST", "/api/activities", {sim::HttpAnswer::reply(200, "ok")});
  }

  /// What happened since the last look, all that is due now included.
  [[nodiscard]] Lines seen() {
    world.settle();
    return tape.take();
  }

  sim::World world;
  sim::SimulatedPhone phone;
  Platform platform = phone.platform();
  Tape tape;
  Campaigns campaigns{tape};
  Logger logger{platform.clock, platform.console, platform.files, platform.queues};
  Lazy<LocationTrackingReliability> reliability{[this] {
    return std::make_shared<LocationTrackingReliability>(platform.main, platform.queues, platform.clock,
                                                         platform.random, platform.store, logger);
  }};
  Lazy<APIService> api{
      [this] { return std::make_shared<APIService>(platform, BaseUrls::builtIn(), logger, reliability); }};
  Lazy<NotificationManager> manager{
      [this] { return std::make_shared<NotificationManager>(platform, logger, api, campaigns); }};
  std::shared_ptr<NotificationPermissionManager> permission =
      std::make_shared<NotificationPermissionManager>(platform, logger, manager);
};

inline NotificationRequest received(json::Object userInfo, std::string title = "Title") {
  NotificationRequest request{.identifier = "N", .content = {}, .delay = {}};
  request.content.title = std::move(title);
  request.content.body = "Body";
  request.content.userInfo = std::move(userInfo);
  return request;
}

}  // namespace orlan::test
