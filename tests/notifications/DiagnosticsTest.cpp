#include <gmock/gmock.h>

#include "orlan/notifications/diagnostics.hpp"

namespace orlan::test {
namespace {

using testing::ElementsAre;

NotificationContent pushed() {
  NotificationContent content;
  content.title = "Hello";
  content.body = "World";
  content.badge = 3;
  content.sound = "bell.caf";
  content.threadIdentifier = "T";
  content.userInfo = {{"gcm.message_id", "m"},
                      {"n_id", 42},
                      {"custom", json::Array{1, "x"}},
                      {"mediaType", nullptr},
                      {"ctaUrl", "https://example.com"},
                      {"notification_data", json::Object{{"notification_id", "42"}, {"cta_label", nullptr}}}};
  return content;
}

TEST(Diagnostics, OfAPushHaveFiveFrames) {
  EXPECT_THAT(diagnostics::received(pushed(), "willPresent"),
              ElementsAre(R"(🔔 PUSH NOTIFICATION RECEIVED [willPresent]
┌─📱 Notification Details
│ Title: "Hello"
│ Body: "World"
│ Subtitle: ""
│ Badge: 3
│ Sound: bell.caf
│ Thread Identifier: "T"
│ Category Identifier: ""
│ Target Content Identifier: ""
│ Launch Image Name: ""
│ Attachments: 0 items
└────────────────────────────────────────────)",
                          R"(🔔 PUSH NOTIFICATION USERINFO [willPresent]
┌─📋 All UserInfo Contents:
│ gcm.message_id: "m"
│ n_id: 42
│ custom: [1, "x"]
│ mediaType: null
│ ctaUrl: "https://example.com"
│ notification_data: {"notification_id": "42", "cta_label": null}
└────────────────────────────────────────────)",
                          R"(🔔 PUSH NOTIFICATION ORLAN FIELDS [willPresent]
┌─🎯 Orlan-Specific Data:
│ n_id: 42
│ location_id: nil
│ mediaType: null
│ mediaUrl: nil
│ ctaLabel: nil
│ ctaUrl: https://example.com
│ campaign_id: nil
│ notification_data.notification_id: 42
│ notification_data.media_url: nil
│ notification_data.cta_label: null
│ notification_data.cta_url: nil
└────────────────────────────────────────────)",
                          R"(🔔 PUSH NOTIFICATION FIREBASE FIELDS [willPresent]
┌─🔥 Firebase-Specific Data:
│ gcm.message_id: "m"
└────────────────────────────────────────────)",
                          R"(🔔 PUSH NOTIFICATION CUSTOM FIELDS [willPresent]
┌─🔧 Custom/Additional Data:
│ custom: [1, "x"]
│ notification_data: {"notification_id": "42", "cta_label": null}
└────────────────────────────────────────────)"));
}

TEST(Diagnostics, LeaveOutFramesWithoutEntries) {
  NotificationContent content;
  content.defaultSound = true;
  content.userInfo = {{"n_id", 1}, {"location_id", 2}};
  const auto blocks = diagnostics::received(content, "didReceive");
  ASSERT_EQ(blocks.size(), 3U);
  EXPECT_THAT(blocks[0], testing::HasSubstr("│ Badge: nil\n│ Sound: default\n"));
  EXPECT_THAT(blocks[2], testing::HasSubstr("[didReceive]\n┌─🎯 Orlan-Specific Data:\n│ n_id: 1\n"));
}

TEST(Diagnostics, SumUpWhatWasUnderstood) {
  OrlanNotificationDetails details{
      .headline = "Hello", .body = "World", .mediaURL = "M", .notifID = 42, .questions = {{{}, {}}}};
  EXPECT_EQ(diagnostics::processed(details), R"(🔔 NOTIFICATION PROCESSING COMPLETE
┌─📊 Parsed Notification Data:
│ Notification ID: 42
│ Location ID: -1
│ Media Type: nil
│ Media URL: M
│ CTA Label: nil
│ CTA URL: nil
│ Title: "Hello"
│ Body: "World"
│ Survey Questions: 2
└────────────────────────────────────────────)");
}

TEST(Diagnostics, NoPayloadLeavesItsLine) {
  const std::string nasty = "a\n└────\n[2026] [ERROR] \x1b[2J\r\x9b\xff\u0085";
  NotificationContent content;
  content.title = content.body = content.subtitle = content.threadIdentifier = content.categoryIdentifier =
      content.targetContentIdentifier = content.launchImageName = nasty;
  content.sound = nasty;
  content.userInfo = {{nasty, nasty},
                      {"gcm." + nasty, json::Array{nasty}},
                      {"mediaUrl", nasty},
                      {"notification_data", json::Object{{"media_url", nasty}, {nasty, nasty}}}};
  auto blocks = diagnostics::received(content, "c");
  const OrlanNotificationDetails details{.headline = nasty,
                                         .body = nasty,
                                         .mediaType = nasty,
                                         .mediaURL = nasty,
                                         .ctaLabel = nasty,
                                         .ctaURL = nasty};
  blocks.push_back(diagnostics::processed(details));
  const std::vector<int> breaks{12, 6, 13, 3, 4, 11};
  ASSERT_EQ(blocks.size(), breaks.size());
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    EXPECT_EQ(std::count(blocks[i].begin(), blocks[i].end(), '\n'), breaks[i]) << blocks[i];
    EXPECT_EQ(blocks[i].find_first_of("\x1b\r\xff"), std::string::npos) << blocks[i];
  }
}

}  // namespace
}  // namespace orlan::test
