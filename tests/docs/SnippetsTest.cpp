// What the guides show in C++ and does something by itself, run on a simulated phone; pages/ has what is only
// compiled. tests/architecture compares guides and sources.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "orlan/orlan.hpp"
#include "phones/simulated/Recorder.hpp"
#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;

using testing::ElementsAre;
using testing::HasSubstr;

struct Delegate : OrlanPluginDelegate {
  void didAuthenticate(OrlanPlugin&, const std::string& deviceID, const std::string& orlanID) override {
    std::printf("device %s, known to the backend as %s\n", deviceID.c_str(), orlanID.c_str());
  }
  void didFailWith(OrlanPlugin&, const Error& error) override {
    std::printf("%s %lld: %s\n", error.domain.c_str(), static_cast<long long>(error.code),
                error.description.c_str());
  }
};

// What the guides leave to the reader.
std::vector<std::string> shown;
const auto show = [](const std::string& text) { shown.push_back(text); };
const auto showScreen = [](const OrlanNotificationDetails& details) { show(details.headline()); };
std::string ask(const SurveyQuestion&) {
  return "5";
}

void ask(const OrlanNotificationDetails& details) {
  if (!details.questions()) return;
  std::vector<SurveyAnswer> answers;
  for (const SurveyQuestion& question : *details.questions()) {
    if (question.choices && !question.choices->empty()) {
      const std::int64_t chosen = question.choices->front().id;  // what the person chose
      answers.push_back(question.toAnswer("", std::vector{chosen}));
    } else {
      answers.push_back(question.toAnswer("4"));  // what the person wrote
    }
  }
  OrlanPlugin::shared().submitSurveyResponse(
      std::to_string(details.notifID()), std::to_string(details.locationID()), answers,
      [](const Result<bool>& sent) { std::puts(sent ? "thank you" : sent.error().description.c_str()); });
}

class Guides : public testing::Test, protected test::SimulatedHost {
 protected:
  /// How many requests went to that path.
  long asked(std::string_view path) const {
    return std::count_if(seen.requests.begin(), seen.requests.end(),
                         [&](const auto& sent) { return sent.url.ends_with(path); });
  }
};

TEST_F(Guides, FetchOnceThePositionIsKnown) {
  const auto subscription = LocationPermissionManager::shared().lastLocationPublisher().subscribe(
      [asked = false](const std::optional<Location>& fix) mutable {
        if (fix && !std::exchange(asked, true)) OrlanPlugin::shared().refetchGeofence();
      });
  start();
  EXPECT_EQ(asked("/check-geofence"), 0);
  phone.moveTo({51.49, -0.12});
  phone.moveTo({51.48, -0.12});
  world.runFor(1s);
  EXPECT_EQ(asked("/check-geofence"), 1);

  OrlanPlugin::shared().refetchGeofence();
  EXPECT_EQ(asked("/check-geofence"), 2);
}

TEST_F(Guides, ShowWhatIsTapped) {
  const auto subscription = NotificationManager::shared().publisher().subscribe(
      [](const OrlanNotificationDetails& details) { showScreen(details); });
  NotificationManager::shared().setAsNotificationDelegate();
  const NotificationRequest request{"r", {.title = "Hello", .body = "", .userInfo = {{"n_id", 5}}}, {}};
  phone.notifications().tap({request});
  EXPECT_THAT(shown, ElementsAre("Hello"));

  const OrlanNotificationDetails details = *NotificationManager::shared().latest();
  NotificationManager::shared().trackMediaView(details.notifID(), details.locationID());
  NotificationManager::shared().trackCTAEngagement(details.notifID(), details.locationID());
  EXPECT_EQ(asked("/api/activities"), 3);
}

TEST_F(Guides, AnswerASurvey) {
  phone.http().answer("POST", "/api/survey-response", {sim::HttpAnswer::reply(200, "")});
  start();
  const OrlanNotificationDetails details(
      {.notifID = 1,
       .questions = {{{.id = 3, .question = "How was it?", .questionType = QuestionType::rating}}}});
  testing::internal::CaptureStdout();
  ask(details);
  world.runFor(1s);
  EXPECT_THAT(testing::internal::GetCapturedStdout(), HasSubstr("thank you\n"));

  OrlanPlugin::shared().trackSurveyEvent("1", std::nullopt, "survey_shown");
  EXPECT_EQ(asked("/api/survey-response"), 2);

  // As orlan/surveys shows it.
  const std::string notificationId = "1";
  const std::optional<std::string> locationId;
  const auto& questions = *details.questions();
  std::vector<SurveyAnswer> answers;
  for (const SurveyQuestion& question : questions) answers.push_back(question.toAnswer(ask(question)));
  OrlanPlugin::shared().submitSurveyResponse(notificationId, locationId, answers,
                                             [](const Result<bool>& sent) {
                                               if (!sent) show(sent.error().description);
                                             });
  EXPECT_EQ(asked("/api/survey-response"), 3);
}

TEST(Guide, PlaysADayOnTheSimulatedPhone) {
  testing::internal::CaptureStdout();
  sim::World world;
  sim::SimulatedPhone phone(world);
  sim::Recorder seen;
  phone.observe(seen);
  phone.http().answer("POST", "/api/device-registerd/create",
                      {sim::HttpAnswer::unreachable(),  // the first attempt fails, others do not
                       sim::HttpAnswer::reply(200, R"({"data": {"device_id": "d-1", "orlan_id": "o-1"}})")});

  Runtime runtime(phone.platform());
  const Runtime::Scope scope(runtime);  // what shared() resolves to on this thread
  const auto delegate = std::make_shared<Delegate>();
  OrlanPlugin::shared().start("my-api-key", Config::Environment::staging, {}, delegate);
  world.runFor(1s);  // didFailWith
  OrlanPlugin::shared().start("my-api-key", Config::Environment::staging, {}, delegate);
  world.runFor(1s);  // didAuthenticate

  phone.moveTo({51.5007, -0.1246});
  phone.application().moveTo(ApplicationState::background);
  world.runFor(24h);
  const auto said = testing::internal::GetCapturedStdout();
  EXPECT_THAT(said, HasSubstr("URLError -1004"));
  EXPECT_THAT(said, HasSubstr("device d-1, known to the backend as o-1"));
}

}  // namespace
}  // namespace orlan
