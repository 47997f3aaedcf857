// What the guides show in C++, compiled and run on a simulated phone. tests/architecture compares the two.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "orlan/orlan.hpp"
#include "phones/simulated/Recorder.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;

using testing::Contains;
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
std::vector<std::string> heard;
void say(const std::string& what, std::int64_t campaign) {
  heard.push_back(what + " " + std::to_string(campaign));
}
void draw(std::span<const Coordinate> ring) {
  heard.push_back("ring of " + std::to_string(ring.size()));
}
void showScreen(const OrlanNotificationDetails& details) {
  heard.push_back(details.headline());
}
void open(const json::Object& userInfo) {
  heard.push_back(json::print(userInfo));
}

std::string ask(const SurveyQuestion&) {
  return "5";
}
void show(const std::string& text) {
  heard.push_back(text);
}

struct Crossings : ForegroundGeofenceDelegate, BackgroundGeofenceDelegate {
  void didEnterCampaign(std::int64_t campaign, std::int64_t) override { say("entered", campaign); }
  void didExitCampaign(std::int64_t campaign, std::int64_t) override { say("left", campaign); }
  void didEnterRegion(std::int64_t campaign, std::int64_t) override { say("entered (BG)", campaign); }
  void didExitRegion(std::int64_t campaign, std::int64_t) override { say("left (BG)", campaign); }
};

struct Taps : OrlanNotificationDelegate {
  void orlanDidReceive(const NotificationResponse& response) override {
    open(response.request.content.userInfo);
  }
};

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

/// A square campaign, 42, around 51.5 north.
constexpr const char* market = R"({"geoCampaign": [{"campaignName": "Market", "campaignId": 42, "type": "geo",
  "locations": [7], "active": "true", "testIds": "", "segmentationTags": "", "locationsArray": {"locationId": 7,
  "_id": "l", "geofence": [
    {"position": 0, "latitude": "51.499", "longitude": "-0.121", "_id": "a"},
    {"position": 1, "latitude": "51.499", "longitude": "-0.119", "_id": "b"},
    {"position": 2, "latitude": "51.501", "longitude": "-0.119", "_id": "c"},
    {"position": 3, "latitude": "51.501", "longitude": "-0.121", "_id": "d"}]},
  "notificationsArray": []}], "pushCampaign": []})";

/// The library on a phone whose backend answers everything.
class Guides : public testing::Test {
 protected:
  Guides() {
    heard.clear();
    phone.observe(seen);
    phone.http().answer(
        "POST", "/api/device-registerd/create",
        {sim::HttpAnswer::reply(200, R"({"data": {"device_id": "d-1", "orlan_id": "o-1"}})")});
    phone.http().answer("POST", "/api/check-geofence", {sim::HttpAnswer::reply(200, market)});
    for (const auto* path : {"/api/activities", "/api/survey-response", "/api/plugin-activity/create"}) {
      phone.http().answer("POST", path, {sim::HttpAnswer::reply(200, "")});
    }
  }

  void start() {
    OrlanPlugin::shared().start("my-api-key", Config::Environment::staging, {}, delegate);
    world.runFor(1s);
  }

  /// How many requests went to that path.
  long asked(std::string_view path) const {
    return std::count_if(seen.requests.begin(), seen.requests.end(),
                         [&](const auto& sent) { return sent.request.url.ends_with(path); });
  }

  sim::World world;
  sim::SimulatedPhone phone{world};
  sim::Recorder seen;
  std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
  Runtime runtime{phone.platform()};
  Runtime::Scope scope{runtime};
};

TEST_F(Guides, StartInThreeWays) {
  OrlanPlugin::shared().start("my-api-key", Config::Environment::staging, {"walkers", "vip"}, delegate);
  EXPECT_EQ(OrlanPlugin::shared().storedApiKey(), "my-api-key");

  testing::internal::CaptureStdout();
  OrlanPlugin::shared().start(Config::Environment::production, {}, delegate);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "OrlanPlugin -1: OrlanConfig.plist is required and must include company_api_key.\n");

  testing::internal::CaptureStdout();
  OrlanPlugin::shared().start("company-key", "app-id", "app-key", "com.example.app",
                              Config::Environment::production, {}, true, delegate);
  EXPECT_THAT(testing::internal::GetCapturedStdout(), HasSubstr("OrlanConfig ios_bundle_id mismatch."));

  const std::string token = "\x01\xff";
  OrlanPlugin::updateAPNsToken(token);  // raw bytes; or updateFCMToken, which wins
}

TEST(Guide, InstallsOnAPhoneAndSetsAddresses) {
  sim::World world;
  sim::SimulatedPhone phone(world);
  auto installed = Runtime::install(phone.platform());
  if (!installed) std::printf("%s\n", installed.error().description.c_str());
  EXPECT_TRUE(installed);
  Runtime::uninstall();

  RuntimeOptions options;
  const auto production = Config::Environment::production;
  auto set = options.urls.setPlatform(production, "https://platform.my-company.com");
  if (set) set = options.urls.setTransmission(production, "https://campaigns.my-company.com");
  if (!set) std::printf("%s\n", set.error().description.c_str());
  EXPECT_TRUE(set);
}

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

TEST_F(Guides, HearOfAreasAndCrossings) {
  const auto subscription =
      OrlanPlugin::polygonsPublisher().subscribe([](const std::vector<Polygon>& polygons) {
        for (const Polygon& polygon : polygons) draw(polygon.coordinates());
      });

  const auto crossings = std::make_shared<Crossings>();
  ForegroundGeofenceMonitor::shared().setDelegate(crossings);
  BackgroundRegionMonitor::shared().setDelegate(crossings);

  phone.moveTo({51.49, -0.12});
  start();
  phone.moveTo({51.5, -0.12});
  world.runFor(1s);
  phone.moveTo({51.49, -0.12});
  phone.application().moveTo(ApplicationState::background);
  phone.moveTo({51.5, -0.12});
  world.runFor(1s);
  EXPECT_THAT(heard, ElementsAre("ring of 4", "entered 42", "left 42", "entered (BG) 42"));
}

TEST_F(Guides, ShowWhatIsTapped) {
  const auto subscription = NotificationManager::shared().publisher().subscribe(
      [](const OrlanNotificationDetails& details) { showScreen(details); });
  NotificationManager::shared().setAsNotificationDelegate();
  const NotificationRequest request{"r", {.title = "Hello", .body = "", .userInfo = {{"n_id", 5}}}, {}};
  phone.notifications().tap({request});
  EXPECT_THAT(heard, ElementsAre("Hello"));

  const OrlanNotificationDetails details = *NotificationManager::shared().latest();
  NotificationManager::shared().trackMediaView(details.notifID(), details.locationID());
  NotificationManager::shared().trackCTAEngagement(details.notifID(), details.locationID());
  EXPECT_EQ(asked("/api/activities"), 3);

  const auto taps = std::make_shared<Taps>();
  NotificationBridge::shared().setDelegate(taps);
  phone.platform().notifications.setDelegate(NotificationBridge::shared().weak_from_this());
  phone.notifications().tap({request});
  EXPECT_THAT(heard, ElementsAre("Hello", R"({"n_id":5})"));
}

TEST_F(Guides, AnswerASurvey) {
  start();
  const OrlanNotificationDetails details(
      {.notifID = 1,
       .questions = {{{.id = 3, .question = "How was it?", .questionType = QuestionType::rating}}}});
  testing::internal::CaptureStdout();
  ask(details);
  world.runFor(1s);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "thank you\n");

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

TEST_F(Guides, AskForTheLocation) {
  testing::internal::CaptureStdout();
  OrlanPlugin::shared().requestLocationWhenInUse();  // or requestLocationAlways
  const auto subscription =
      OrlanPlugin::locationAuthorizationPublisher().subscribe([](LocationAuthorization status) {
        std::printf("location: %d\n", static_cast<int>(rawValue(status)));
      });
  LocationPermissionManager::shared().configure();
  EXPECT_THAT(testing::internal::GetCapturedStdout(), HasSubstr("location: 0\nlocation: 3\n"));
}

TEST_F(Guides, AskForNotifications) {
  testing::internal::CaptureStdout();
  OrlanPlugin::shared().requestPushPermission();
  const auto subscription =
      OrlanPlugin::pushAuthorizationPublisher().subscribe([](NotificationAuthorization status) {
        std::printf("push: %d\n", static_cast<int>(rawValue(status)));
      });
  world.runFor(1s);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "push: 0\npush: 2\n");
  EXPECT_EQ(seen.remoteRegistrations, 1);
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

int installed(const Platform& phone) {
  auto& [main, queues, clock, random, store, files, http, locations, notifications, application, device,
         bundle, console, systemLog] = phone;
  const Platform platform{main,      queues,        clock,       random, store,  files,   http,
                          locations, notifications, application, device, bundle, console, systemLog};
  if (!Runtime::install(platform)) return 1;
  return 0;
}

TEST(Guide, PutsAPhoneTogether) {
  sim::World world;
  sim::SimulatedPhone phone(world);
  EXPECT_EQ(installed(phone.platform()), 0);
  Runtime::uninstall();
}

}  // namespace
}  // namespace orlan
