#include <gmock/gmock.h>

#include "notifications/NotificationBed.hpp"

namespace orlan::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using Status = NotificationAuthorization;

TEST(NotificationPermissions, ARefreshPublishesTheCentresStatus) {
  NotificationBed bed{{.authorization = Status::provisional}};
  std::vector<Status> heard;
  const auto listening =
      bed.permission->statusPublisher().subscribe([&](Status status) { heard.push_back(status); });
  bed.permission->refresh();
  EXPECT_EQ(bed.permission->currentStatus(), Status::notDetermined);
  EXPECT_EQ(bed.phone.notifications().delegate(), nullptr) << "not before the next turn of the main loop";
  bed.world.settle();
  EXPECT_EQ(bed.permission->currentStatus(), Status::provisional);
  EXPECT_EQ(bed.phone.notifications().delegate(), bed.permission);
  EXPECT_THAT(heard, ElementsAre(Status::notDetermined, Status::provisional));
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
       Unexpected(Error{.domain = "Centre", .code = 1, .description = "no way to ask"}),
       {},
       {"system [Orlan] Push-auth error: no way to ask"}},
  };
  for (const Row& row : rows) {
    NotificationBed bed{{.authorization = Status::notDetermined, .answer = row.answer, .refusal = {}}};
    std::vector<Status> heard;
    const auto listening =
        bed.permission->statusPublisher().subscribe([&](Status status) { heard.push_back(status); });
    heard.clear();
    bed.permission->requestPermission();
    EXPECT_EQ(bed.seen(), row.seen) << row.name;
    EXPECT_EQ(heard, row.published) << row.name;
  }
}

TEST(NotificationPermissions, HandsOnWhatIsPresentedAndShowsItWithoutBadge) {
  NotificationBed bed;
  bed.permission->refresh();
  bed.world.settle();
  bed.phone.notifications().present(received({{"questions", "[]"}}));
  EXPECT_THAT(bed.seen(),
              ElementsAre("system [Orlan] 🔔 NotificationPermissionManager.willPresent - Received foreground "
                          "notification",
                          "• 🔔 NotificationPermissionManager.willPresent - Received foreground notification",
                          "• 🔔 NotificationPermissionManager.willPresent - Notification ID: N",
                          "• 🔔 NotificationPermissionManager - Forwarding to NotificationManager.willPresent",
                          "• 🔧 NotificationManager ready", "• 🔔 willPresent notification - identifier: N",
                          "• 🔔 PUSH NOTIFICATION RECEIVED [willPresent]",
                          "• 🔔 PUSH NOTIFICATION USERINFO [willPresent]",
                          "• 🔔 PUSH NOTIFICATION ORLAN FIELDS [willPresent]",
                          "• 🔔 PUSH NOTIFICATION CUSTOM FIELDS [willPresent]",
                          "• 🔔 NotificationManager.handle() - Processing notification",
                          "• 🔍 Found questions JSON string in payload",
                          "• ✅ Successfully parsed 0 question(s) from payload",
                          "• 🔔 NOTIFICATION PROCESSING COMPLETE",
                          "• 📊 Reporting notification activity: notification_delivered",
                          "report notification_delivered as notification of -1 at -1",
                          "• 📤 Publishing tapped notif -1", "shown 18"));
}

TEST(NotificationPermissions, HandsOnWhatIsTappedAndCompletes) {
  NotificationBed bed;
  bed.permission->didReceive({received({{"n_id", 5}, {"b\n", 1}, {"a", 2}}), "open"},
                             [&] { bed.tape.note("completed"); });
  const Lines seen = bed.seen();
  const auto handled =
      std::find(seen.begin(), seen.end(), "• 🔔 didReceive notification response - identifier: N");
  ASSERT_NE(handled, seen.end());
  EXPECT_THAT(Lines(seen.begin(), handled),
              ElementsAre("system [Orlan] 🔔 NotificationPermissionManager.didReceive - User tapped "
                          "notification - Action: open",
                          "system [Orlan] 🔔 NotificationPermissionManager.didReceive - Notification ID: N",
                          "• 🔔 NotificationPermissionManager.didReceive - User tapped notification",
                          "• 🔔 NotificationPermissionManager.didReceive - Notification ID: N",
                          "• 🔔 NotificationPermissionManager - Action: open",
                          "• 🔔 NotificationPermissionManager - UserInfo keys: n_id, b\\n, a",
                          "• 🔔 NotificationPermissionManager - Forwarding to NotificationManager.didReceive",
                          "• 🔧 NotificationManager ready"));
  const auto published = std::find(seen.begin(), seen.end(), "• 📤 Publishing tapped notif 5");
  ASSERT_NE(published, seen.end());
  EXPECT_THAT(Lines(published + 1, seen.end()),
              ElementsAre("• 🔔 NotificationPermissionManager - Forward complete",
                          "system [Orlan] 🔔 NotificationPermissionManager - Forward complete", "completed"));
}

TEST(NotificationPermissions, NothingOfItOutlivesIt) {
  NotificationBed bed;
  bed.permission->refresh();
  bed.permission.reset();
  bed.world.settle();
  EXPECT_EQ(bed.phone.notifications().delegate(), nullptr);

  bed.permission = std::make_shared<NotificationPermissionManager>(bed.platform, bed.logger, bed.manager);
  std::vector<Status> heard;
  const auto listening =
      bed.permission->statusPublisher().subscribe([&](Status status) { heard.push_back(status); });
  bed.platform.main.async([&] { bed.permission.reset(); });  // between the question and its answer
  bed.permission->refresh();
  bed.world.settle();
  EXPECT_THAT(heard, ElementsAre(Status::notDetermined));
}

}  // namespace
}  // namespace orlan::test
