#include <gmock/gmock.h>

#include "notifications/NotificationBed.hpp"
#include "orlan/notifications/NotificationBridge.hpp"
#include "orlan/notifications/NotificationEnvelope.hpp"

namespace orlan::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

using Latest = std::optional<OrlanNotificationDetails>;

const json::Object campaignInfo{{"campaign_id", 1},
                                {"location_id", 7},
                                {"n_id", 42},
                                {"mediaType", "image"},
                                {"ctaLabel", "Go"},
                                {"ctaUrl", "C"},
                                {"questions", "[]"},
                                {"post_message", "Thanks"},
                                {"notification_data", json::Object{{"media_url", "a\nb"}}}};

TEST(Notifications, ATapBeforeStartIsReportedAndPublished) {
  NotificationBed bed;
  bed.manager->setAsNotificationDelegate();
  const auto hearing = bed.manager->publisher().subscribe([&](const OrlanNotificationDetails& details) {
    bed.tape.note("published " + std::to_string(details.notifID));
    EXPECT_EQ(bed.manager->latest(), std::nullopt) << "latest follows";
  });
  bed.phone.notifications().tap({received(campaignInfo), "default"});
  const Lines seen = bed.seen();
  EXPECT_THAT(seen, Contains("• 🔔 Extracted from notification_data: notifID=-1, mediaURL=a\\nb, type=nil"));
  const auto complete = std::find(seen.begin(), seen.end(), "• 🔔 NOTIFICATION PROCESSING COMPLETE");
  EXPECT_THAT(Lines(complete, seen.end()),
              ElementsAre("• 🔔 NOTIFICATION PROCESSING COMPLETE",
                          "• 📊 Reporting notification activity: notification_delivered",
                          "report notification_delivered as notification of 42 at 7",
                          "• 📤 Publishing tapped notif 42", "published 42"));
  const Latest latest = bed.manager->latest();
  ASSERT_TRUE(latest);
  EXPECT_THAT(latest->id, MatchesRegex("[0-9A-F-]{36}"));
  EXPECT_EQ(*latest, (OrlanNotificationDetails{.id = latest->id,
                                               .headline = "Title",
                                               .body = "Body",
                                               .mediaType = "image",
                                               .mediaURL = "a\nb",
                                               .ctaLabel = "Go",
                                               .ctaURL = "C",
                                               .notifID = 42,
                                               .locationID = 7,
                                               .questions = std::vector<SurveyQuestion>{},
                                               .completionMessage = "Thanks"}));
}

TEST(Notifications, PresentedAndTappedArePublishedTwice) {
  NotificationBed bed;
  bed.manager->setAsNotificationDelegate();
  std::vector<std::string> identifiers;
  std::vector<bool> latest;
  const auto records = bed.manager->publisher().subscribe(
      [&](const OrlanNotificationDetails& details) { identifiers.push_back(details.id); });
  const auto changes =
      bed.manager->latestPublisher().subscribe([&](const Latest& now) { latest.push_back(now.has_value()); });
  bed.phone.notifications().present(received(campaignInfo));
  bed.phone.notifications().tap({received(campaignInfo), "default"});
  EXPECT_THAT(bed.seen(), Contains("shown 19"));
  ASSERT_THAT(identifiers, SizeIs(2));
  EXPECT_NE(identifiers[0], identifiers[1]);
  bed.manager->clearLatest();
  EXPECT_THAT(latest, ElementsAre(false, true, true, false));
  EXPECT_THAT(bed.seen(), ElementsAre("• 🔔 Cleared latest notification"));
}

TEST(Notifications, ASubscriberMayCancelItselfOrSubscribeAnew) {
  NotificationBed bed;
  int once = 0;
  int late = 0;
  Subscription first;
  Subscription second;
  first = bed.manager->publisher().subscribe([&](const OrlanNotificationDetails&) {
    ++once;
    second = bed.manager->publisher().subscribe([&](const OrlanNotificationDetails&) { ++late; });
    bed.manager->clearLatest();
    first.cancel();
  });
  const auto tap = [&] { bed.manager->didReceive({received(campaignInfo), "default"}, [] {}); };
  tap();
  EXPECT_TRUE(bed.manager->latest()) << "latest is set after the emission";
  tap();
  EXPECT_EQ(once, 1);
  EXPECT_EQ(late, 1);
}

TEST(Notifications, EngagementIsReportedWithTheIdentifiersAsTheyAre) {
  NotificationBed bed;
  bed.manager->trackCTAEngagement(42, 7);
  bed.manager->trackMediaView(-1, -1);
  bed.manager->reportNotification(ActivityType::notificationSent, 1, 2, NotificationType::location);
  EXPECT_THAT(bed.seen(),
              ElementsAre("• 🔧 NotificationManager ready", "• 🔗 Tracking CTA engagement - notificationID: 42",
                          "• 📊 Reporting notification activity: cta_engagement",
                          "report cta_engagement as notification of 42 at 7",
                          "• 📺 Tracking media view - notificationID: -1",
                          "• 📊 Reporting notification activity: media_viewed",
                          "report media_viewed as notification of -1 at -1",
                          "• 📊 Reporting notification activity: notification_sent",
                          "report notification_sent as location of 2 at 1"));
}

TEST(TestNotifications, CarryTheirPayloads) {
  const std::string basic =
      R"("n_id":"999","location_id":"888","mediaType":"image",)"
      R"("mediaUrl":"https://placehold.co/400x300.png","ctaLabel":"Test CTA","ctaUrl":"https://www.example.com")";
  struct Row {
    const char* name;
    std::function<void(NotificationManager&)> send;
    Lines said;
    std::string userInfo;
  };
  const Row rows[] = {
      {"own payload",
       [](auto& manager) {
         manager.sendTestNotificationWithPayload({{"x", 1}});
       },
       {},
       R"({"x":1})"},
      {"basic",
       [](auto& manager) { manager.sendTestNotification(); },
       {"• 🔔 Sending basic test notification"},
       "{" + basic + "}"},
      {"push style",
       [](auto& manager) { manager.sendFirebaseStyleTestNotification(); },
       {"• 🔔 Sending Firebase-style test notification"},
       "{" + basic +
           R"(,"gcm.message_id":"test-message-id-123","google.c.a.e":"1","google.c.a.c_id":"test-campaign-id",)"
           R"("google.c.a.ts":"1767225600","custom_field":"custom_value","another_field":"another_value"})"},
  };
  for (const Row& row : rows) {
    NotificationBed bed;
    row.send(*bed.manager);
    Lines expected{"• 🔧 NotificationManager ready"};
    expected.insert(expected.end(), row.said.begin(), row.said.end());
    expected.insert(expected.end(), {"• 🔔 Sending test notification with custom payload",
                                     "• 🔔 Test notification scheduled successfully"});
    EXPECT_EQ(bed.seen(), expected) << row.name;
    ASSERT_THAT(bed.tape.scheduled, SizeIs(1)) << row.name;
    const auto& [identifier, content, delay] = bed.tape.scheduled.front();
    EXPECT_THAT(identifier, MatchesRegex("test-notification-manager-[0-9A-F-]{36}")) << row.name;
    EXPECT_EQ(delay, std::chrono::seconds(1)) << row.name;
    EXPECT_EQ(content.title, "Test Notification");
    EXPECT_EQ(content.body, "This is a test notification from NotificationManager");
    EXPECT_TRUE(content.defaultSound);
    EXPECT_EQ(json::print(content.userInfo), row.userInfo) << row.name;
  }
}

TEST(TestNotifications, ARefusalIsLogged) {
  NotificationBed bed{{.authorization = {}, .answer = true, .refusal = Error{"Centre", 1, "not now"}}};
  bed.manager->sendTestNotificationWithPayload({});
  EXPECT_THAT(bed.seen(), Contains("INFO Test notification error: not now"));
}

TEST(NotificationDelegates, WhoeverCameLastIsAsked) {
  NotificationBed bed;
  const auto bridge = std::make_shared<NotificationBridge>(bed.platform.main);
  const auto shownAs = [&] {
    bed.phone.notifications().present(received(campaignInfo));
    return bed.seen().back();
  };
  bed.permission->refresh();
  bed.world.settle();
  EXPECT_EQ(shownAs(), "shown 18");
  bed.manager->setAsNotificationDelegate();
  EXPECT_THAT(bed.seen(), ElementsAre("• 🔔 NotificationManager set as UNUserNotificationCenter delegate",
                                      "• ✅ NotificationManager confirmed as delegate"));
  EXPECT_EQ(shownAs(), "shown 19");
  bed.platform.notifications.setDelegate(bridge->weak_from_this());
  bed.phone.notifications().present(received(campaignInfo));
  EXPECT_THAT(bed.seen(), ElementsAre("shown 19"));
  bed.permission->refresh();
  bed.world.settle();
  EXPECT_EQ(shownAs(), "shown 18");
}

struct Host final : OrlanNotificationDelegate {
  explicit Host(std::shared_ptr<Host>& owner) : itself(owner) {}
  void orlanDidReceive(const NotificationResponse& response) override {
    itself.reset();
    heard.push_back(response.actionIdentifier);
  }
  std::shared_ptr<Host>& itself;
  std::vector<std::string> heard;
};

TEST(NotificationBridge, HandsTheResponseToAHostThatMayDieInsideTheCall) {
  NotificationBed bed;
  const auto bridge = std::make_shared<NotificationBridge>(bed.platform.main);
  int completed = 0;
  const auto tap = [&] { bridge->didReceive({received({}), "open"}, [&] { ++completed; }); };
  tap();
  EXPECT_EQ(completed, 1) << "without a host";

  std::shared_ptr<Host> host;
  host = std::make_shared<Host>(host);
  bridge->setDelegate(host);
  tap();
  EXPECT_EQ(completed, 2);
  EXPECT_EQ(host, nullptr) << "the host was called";
  EXPECT_EQ(bridge->delegate(), nullptr) << "held weakly";
  tap();
  EXPECT_EQ(completed, 3);
  EXPECT_THAT(bed.seen(), IsEmpty());
}

TEST(NotificationEnvelope, NamesItsMediaWhenTheyAreUsable) {
  struct Row {
    const char* name;
    json::Value url;
    bool usable;
  };
  const Row rows[] = {
      {"https", "https://images.example/a%20b.png?w=1&h=2#top", true},
      {"relative", "images/a.png", true},
      {"a colon behind the first segment", "a/b:c", true},
      {"IPv6", "http://[::1]:8080/", true},
      {"empty", "", false},
      {"blank inside", "https://images.example/a b.png", false},
      {"control character", "https://images.example/\n", false},
      {"beyond ASCII", "https://images.example/ü.png", false},
      {"broken escape", "https://images.example/%2", false},
      {"escape that is no number", "https://images.example/%zz", false},
      {"no scheme in front of its colon", "1http://images.example", false},
      {"number", 7, false},
      {"null", nullptr, false},
  };
  NotificationBed bed;
  for (const Row& row : rows) {
    const auto envelope = NotificationEnvelope::make(
        "T", "B", {{"mediaUrl", row.url}, {"mediaType", row.url}}, bed.platform.random);
    EXPECT_EQ(envelope.mediaUrl(), row.usable ? std::optional(*row.url.string()) : std::nullopt) << row.name;
    EXPECT_EQ(envelope.mediaType().has_value(), row.url.string() != nullptr) << row.name;
  }
  const auto made = [&] { return NotificationEnvelope::make("T", "B", {}, bed.platform.random); };
  EXPECT_NE(made().id, made().id);
  EXPECT_EQ(made().mediaUrl(), std::nullopt);
}

}  // namespace
}  // namespace orlan::test
