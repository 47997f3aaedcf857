#include <gtest/gtest.h>

#include "orlan/notifications/NotificationEnvelope.hpp"
#include "support/SimulatedHost.hpp"

namespace orlan::test {
namespace {

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

}  // namespace
}  // namespace orlan::test
