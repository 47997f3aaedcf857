// A host in C++: one walk past a café, its survey answered, on the simulated phone. A test of a host looks
// like this: nothing is mocked but the network's answers, and an hour takes a millisecond.
#include <chrono>
#include <iostream>
#include <memory>
#include <orlan/orlan.hpp>
#include <phones/simulated/SimulatedPhone.hpp>
#include <string>

namespace {

using namespace std::chrono_literals;
using orlan::sim::HttpAnswer;

const std::string campaigns = R"({"geoCampaign": [{
  "campaignName": "Café", "campaignId": 42, "type": "geofence", "locations": [7], "active": "true",
  "testIds": "", "segmentationTags": "",
  "locationsArray": {"locationId": 7, "_id": "", "geofence": [
    {"position": 0, "latitude": "51.499", "longitude": "-0.121", "_id": ""},
    {"position": 1, "latitude": "51.499", "longitude": "-0.119", "_id": ""},
    {"position": 2, "latitude": "51.501", "longitude": "-0.119", "_id": ""},
    {"position": 3, "latitude": "51.501", "longitude": "-0.121", "_id": ""}]},
  "notificationsArray": [{
    "id": 3, "campaignId": [42], "headline": "How was your coffee?", "body": "One tap, one answer.", "type": "text",
    "media": [], "cta": [], "segmentationTags": "", "testIds": "", "start": "", "end": "", "activation": "ON_EXIT",
    "questions": [{"id": 9, "question": "Stars?", "question_type": "RATING", "has_choices": false, "position": 0,
                   "choices": []}]}]}], "pushCampaign": []})";

/// The application: it shows what the library publishes.
class Application final : public orlan::OrlanPluginDelegate {
 public:
  void didAuthenticate(orlan::OrlanPlugin&, const std::string&, const std::string& orlanID) override {
    std::cout << "started as " << orlanID << '\n';
  }
  void didFailWith(orlan::OrlanPlugin&, const orlan::Error& error) override {
    std::cout << "not started: " << error.description << '\n';
  }

  /// The person taps five stars.
  void show(const orlan::OrlanNotificationDetails& details) {
    std::cout << "tapped: " << details.headline() << '\n';
    std::vector<orlan::SurveyAnswer> answers;
    for (const auto& question : details.questions().value_or(std::vector<orlan::SurveyQuestion>())) {
      std::cout << "  " << question.question << " 5\n";
      answers.push_back(question.toAnswer("5"));
    }
    orlan::OrlanPlugin::shared().submitSurveyResponse(
        std::to_string(details.notifID()), std::to_string(details.locationID()), answers,
        [](const auto& result) {
          std::cout << (result ? "  thank you\n" : "  not sent: " + result.error().description + '\n');
        });
  }
};

}  // namespace

int main() {
  orlan::sim::World world;
  orlan::sim::SimulatedPhone phone(world);
  phone.http().answer("POST", "/api/device-registerd/create",
                      {HttpAnswer::reply(200, R"({"data": {"device_id": "d-1", "orlan_id": "o-1"}})")});
  phone.http().answer("POST", "/api/check-geofence", {HttpAnswer::reply(200, campaigns)});
  phone.http().answer("POST", "/api/activities", {HttpAnswer::reply(200, "ok")});
  phone.http().answer("POST", "/api/plugin-activity/create", {HttpAnswer::reply(200, "ok")});
  phone.http().answer("POST", "/api/survey-response", {HttpAnswer::reply(201, "ok")});
  if (!orlan::Runtime::install(phone.platform())) return 1;

  const auto application = std::make_shared<Application>();
  auto tapped = orlan::NotificationManager::shared().publisher().subscribe(
      [&](const auto& details) { application->show(details); });
  phone.moveTo({51.490, -0.120});
  orlan::OrlanPlugin::shared().start("api-key", orlan::Config::Environment::staging, {"regulars"},
                                     application);
  world.runFor(1min);

  phone.moveTo({51.500, -0.120});
  world.runFor(20min);
  phone.application().moveTo(orlan::ApplicationState::inactive);  // so that it waits to be tapped
  phone.moveTo({51.510, -0.120});
  world.runFor(1min);
  for (const auto& notification : phone.scheduled()) phone.notifications().tap({notification});
  world.runFor(1min);

  orlan::Runtime::uninstall();
}
