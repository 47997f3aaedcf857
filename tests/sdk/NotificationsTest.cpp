#include <gmock/gmock.h>

#include "orlan/notifications/NotificationEnvelope.hpp"
#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using test::SimulatedHost;
using ::testing::Contains;
using ::testing::Not;

// One campaign around 51.5, -0.12 whose notification greets and asks.
constexpr char market[] =
    R"({"geoCampaign":[{"campaignName":"Market","campaignId":4,"type":"GEO","locations":[],
  "active":"1","testIds":"","segmentationTags":"","locationsArray":{"locationId":7,"_id":"","geofence":[
    {"position":0,"latitude":"51.499","longitude":"-0.121","_id":""},
    {"position":1,"latitude":"51.499","longitude":"-0.119","_id":""},
    {"position":2,"latitude":"51.501","longitude":"-0.119","_id":""},
    {"position":3,"latitude":"51.501","longitude":"-0.121","_id":""}]},
  "notificationsArray":[{"id":42,"campaignId":[4],"headline":"Hello","body":"Come in","type":"INFO",
    "media":[{"type":"image","url":"M","_id":""}],"cta":[],"segmentationTags":"","testIds":"","start":"","end":"",
    "questions":[{"id":5,"question":"Why?","question_type":"RATING","has_choices":false,"position":1,
                  "choices":[]}],"activation":"ON_ENTER"}]}],"pushCampaign":[]})";

TEST(Notifications, WhatTheLibraryPostsComesBackAsDetailsWithItsQuestions) {
  SimulatedHost host;
  OrlanServices& services = host.services();
  host.phone.http().forget("POST", "/api/check-geofence");
  host.phone.http().answer("POST", "/api/check-geofence", {sim::HttpAnswer::reply(200, market)});
  host.phone.moveTo({51.5, -0.2});
  host.start();
  EXPECT_EQ(services.notificationManager.ifBuilt(), nullptr) << "nobody has used it yet";
  EXPECT_EQ(services.notificationBridge.ifBuilt(), nullptr);

  host.phone.moveTo({51.5, -0.12});
  host.world.runFor(std::chrono::seconds(2));
  ASSERT_EQ(host.phone.scheduled().size(), 1U);
  ASSERT_NE(services.notificationManager.ifBuilt(), nullptr) << "it was presented in front";
  NotificationManager& manager = *services.notificationManager;
  manager.clearLatest();
  host.phone.notifications().tap({host.phone.scheduled().front(), "default"});
  const auto latest = manager.latest();
  ASSERT_TRUE(latest);
  const std::vector<SurveyQuestion> questions{
      {5, "Why?", QuestionType::rating, false, 1, std::vector<SurveyChoice>{}}};
  EXPECT_EQ(latest->content(), (OrlanNotificationDetails::Content{.headline = "Hello",
                                                                  .body = "Come in",
                                                                  .mediaType = "image",
                                                                  .mediaURL = "M",
                                                                  .notifID = 42,
                                                                  .locationID = 7,
                                                                  .questions = questions}));
}

TEST(Notifications, EachRecordHasAnIdOfItsOwn) {
  SimulatedHost host;
  const OrlanNotificationDetails none;
  EXPECT_EQ(none.content(), OrlanNotificationDetails::Content());
  EXPECT_EQ(none.notifID(), -1);
  EXPECT_EQ(none.id().size(), 36U);
  EXPECT_NE(none, OrlanNotificationDetails());
  EXPECT_EQ(none, OrlanNotificationDetails(none)) << "a copy is the same record";
  EXPECT_NE(NotificationEnvelope("T", "B", {}).id, NotificationEnvelope("T", "B", {}).id);
}

TEST(Notifications, ATapBeforeStartFindsTheCachedCampaigns) {
  sim::PhoneSettings settings;
  settings.files["orlan-geofences.json"] = market;
  SimulatedHost host(std::move(settings));
  NotificationManager::shared().setAsNotificationDelegate();
  EXPECT_EQ(host.services().geofence.ifBuilt(), nullptr);
  NotificationResponse response;
  response.request.content.userInfo = {{"id", "42"}};
  host.phone.notifications().tap(response);
  const auto latest = NotificationManager::shared().latest();
  ASSERT_TRUE(latest && latest->questions());
  EXPECT_EQ(latest->questions()->front().question, "Why?");
  EXPECT_THAT(host.seen.lines,
              Contains("request POST https://platform.staging.orlan.example/api/activities"));
  EXPECT_THAT(host.seen.lines, Not(Contains("log • Push status = 2")));
}

}  // namespace
}  // namespace orlan
