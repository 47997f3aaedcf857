#include <gmock/gmock.h>

#include "orlan/notifications/NotificationBridge.hpp"
#include "orlan/notifications/NotificationEnvelope.hpp"
#include "orlan/notifications/NotificationManager.hpp"
#include "orlan/notifications/NotificationPermissionManager.hpp"
#include "orlan/notifications/diagnostics.hpp"
#include "support/FloorHost.hpp"

namespace orlan::test {
namespace {

using testing::IsEmpty;
using Status = NotificationAuthorization;

struct NoCampaigns final : CampaignSource {
  [[nodiscard]] std::shared_ptr<const CampaignData> current() override { return nullptr; }
};

struct Bed : FloorHost {
  explicit Bed(phone::NotificationSettings settings = {})
      : FloorHost({.notifications = std::move(settings)}) {}

  NoCampaigns campaigns;
  Lazy<NotificationManager> manager{
      [this] { return std::make_shared<NotificationManager>(platform, logger, api, campaigns); }};
  std::shared_ptr<NotificationPermissionManager> permission =
      std::make_shared<NotificationPermissionManager>(platform, logger, manager);
};

NotificationResponse tapped(json::Object userInfo) {
  NotificationResponse response{.actionIdentifier = "open"};
  response.request.content.userInfo = std::move(userInfo);
  return response;
}

TEST(Notifications, TheDumpAlsoNamesWhatOnlyOtherPhonesHave) {
  const NotificationContent content{
      .title = "a", .targetContentIdentifier = "g", .launchImageName = "h", .attachments = 2};
  EXPECT_THAT(diagnostics::received(content, "willPresent").front(),
              testing::HasSubstr("\n│ Target Content Identifier: \"g\"\n│ Launch Image Name: \"h\""
                                 "\n│ Attachments: 2 items\n"));
}

TEST(Notifications, AManagerThatNobodySharesCannotBeTheDelegate) {
  Bed bed;
  NotificationManager manager(bed.platform, bed.logger, bed.api, bed.campaigns);
  manager.setAsNotificationDelegate();
  EXPECT_EQ(bed.seen().back(), "• ❌ NotificationManager NOT set as delegate - current: nil");
}

TEST(NotificationPermissions, ARefreshPublishesTheCentresStatus) {
  Bed bed{{.authorization = Status::provisional}};
  bed.permission->refresh();
  EXPECT_EQ(bed.permission->currentStatus(), Status::notDetermined);
  EXPECT_EQ(bed.phone.notifications().delegate(), nullptr) << "not before the next turn of the main loop";
  bed.world.settle();
  EXPECT_EQ(bed.permission->currentStatus(), Status::provisional);
  EXPECT_EQ(bed.phone.notifications().delegate(), bed.permission);
  EXPECT_EQ(bed.manager.ifBuilt(), nullptr);
}

TEST(NotificationPermissions, ARequestTakesThePersonsAnswer) {
  struct Row {
    const char* name;
    Result<bool> answer;
    std::vector<Status> published;
    Lines seen;
  };
  const Row rows[] = {
      {"a yes", true, {Status::authorized}, {"remote registration"}},
      {"a no", false, {Status::denied}, {}},
      {"no answer",
       Unexpected(Error{.domain = "Centre", .code = 1, .description = "no way\nto ask"}),
       {},
       {"system [Orlan] Push-auth error: no way\nto ask"}},
  };
  for (const Row& row : rows) {
    Bed bed{{.authorization = Status::notDetermined, .answer = row.answer, .refusal = {}}};
    std::vector<Status> heard;
    const auto listening =
        bed.permission->statusPublisher().subscribe([&](Status status) { heard.push_back(status); });
    heard.clear();
    bed.permission->requestPermission();
    EXPECT_EQ(bed.seen(), row.seen) << row.name;
    EXPECT_EQ(heard, row.published) << row.name;
  }
}

TEST(NotificationBridge, CompletesWithAndWithoutAHost) {
  struct Host final : OrlanNotificationDelegate {
    void orlanDidReceive(const NotificationResponse& response) override { heard = response.actionIdentifier; }
    std::string heard;
  };
  Bed bed;
  const auto bridge = std::make_shared<NotificationBridge>(bed.platform.main);
  int completed = 0;
  const auto tap = [&] { bridge->didReceive(tapped({}), [&] { ++completed; }); };
  tap();
  auto host = std::make_shared<Host>();
  bridge->setDelegate(host);
  EXPECT_EQ(bridge->delegate(), host);
  tap();
  EXPECT_EQ(host->heard, "open");
  host.reset();
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
      {"IPv6", "http://[::1]:8080/", true},
      {"IPv6 left open", "http://[::1", false},
      {"a port that is no number", "http://a:b/", false},
      {"a bracket outside the host", "a]b", false},
      {"empty", "", false},
      {"control character", "https://images.example/\n", false},
      {"beyond ASCII", "https://images.example/ü.png", false},
      {"broken escape", "https://images.example/%2", false},
      {"no scheme in front of its colon", "1http://images.example", false},
      {"number", 7, false},
      {"null", nullptr, false},
  };
  Bed bed;
  for (const Row& row : rows) {
    const NotificationEnvelope envelope("T", "B", {{"mediaUrl", row.url}, {"mediaType", row.url}},
                                        bed.platform.random);
    EXPECT_EQ(envelope.mediaUrl(), row.usable ? std::optional(*row.url.string()) : std::nullopt) << row.name;
    EXPECT_EQ(envelope.mediaType().has_value(), row.url.string() != nullptr) << row.name;
  }
}

}  // namespace
}  // namespace orlan::test
