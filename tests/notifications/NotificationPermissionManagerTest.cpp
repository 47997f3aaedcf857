#include <gmock/gmock.h>

#include "orlan/notifications/NotificationPermissionManager.hpp"
#include "phones/simulated/Recorder.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Status = NotificationAuthorization;

class NotificationPermissions : public testing::Test {
 protected:
  NotificationPermissions() { phone_.observe(seen_); }

  sim::World world_;
  sim::SimulatedPhone phone_{world_, {.notifications = {.authorization = Status::provisional}}};
  sim::Recorder seen_;
  std::unique_ptr<NotificationPermissionManager> manager_ =
      std::make_unique<NotificationPermissionManager>(phone_.platform().main, phone_.notifications());
};

TEST_F(NotificationPermissions, ARefreshPublishesTheCentresStatus) {
  std::vector<Status> heard;
  const auto listening =
      manager_->statusPublisher().subscribe([&](Status status) { heard.push_back(status); });
  manager_->refresh();
  EXPECT_EQ(manager_->currentStatus(), Status::notDetermined);
  EXPECT_EQ(phone_.notifications().delegate(), nullptr) << "not before the next turn of the main loop";
  world_.settle();
  EXPECT_EQ(manager_->currentStatus(), Status::provisional);
  EXPECT_THAT(heard, ElementsAre(Status::notDetermined, Status::provisional));
}

TEST_F(NotificationPermissions, AnswersAPresentationWithBannerAndSound) {
  manager_->refresh();
  world_.settle();
  phone_.notifications().present({.identifier = "n", .content = {}, .delay = {}});
  ASSERT_THAT(seen_.presented, SizeIs(1));
  EXPECT_EQ(seen_.presented.front().options, 18U);
}

TEST_F(NotificationPermissions, CompletesATap) {
  manager_->refresh();
  world_.settle();
  bool completed = false;
  phone_.notifications().delegate()->didReceive({}, [&] { completed = true; });
  EXPECT_TRUE(completed);
}

TEST_F(NotificationPermissions, NothingOfItOutlivesIt) {
  manager_->refresh();
  manager_.reset();
  world_.settle();
  EXPECT_EQ(phone_.notifications().delegate(), nullptr);

  manager_ = std::make_unique<NotificationPermissionManager>(phone_.platform().main, phone_.notifications());
  std::vector<Status> heard;
  const auto listening =
      manager_->statusPublisher().changes().subscribe([&](Status status) { heard.push_back(status); });
  phone_.platform().main.async([&] { manager_.reset(); });  // between the question and its answer
  manager_->refresh();
  world_.settle();
  EXPECT_THAT(heard, IsEmpty());
}

}  // namespace
}  // namespace orlan::test
