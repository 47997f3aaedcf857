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

std::unique_ptr<NotificationPermissionManager> makeManager(sim::SimulatedPhone& simulated) {
  const Platform phone = simulated.platform();
  return std::make_unique<NotificationPermissionManager>(phone.main, phone.notifications, phone.application,
                                                         phone.systemLog);
}

class NotificationPermissions : public testing::Test {
 protected:
  NotificationPermissions() { phone_.observe(seen_); }

  sim::World world_;
  sim::SimulatedPhone phone_{world_, {.notifications = {.authorization = Status::provisional}}};
  sim::Recorder seen_;
  std::unique_ptr<NotificationPermissionManager> manager_ = makeManager(phone_);
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

TEST(NotificationPermissionRequest, TakesThePersonsAnswer) {
  struct Row {
    const char* name;
    Result<bool> answer;
    std::vector<Status> published;
    int registrations;
    std::vector<std::string> systemLines;
  };
  const Row rows[] = {
      {"a yes", true, {Status::authorized}, 1, {}},
      {"a no", false, {Status::denied}, 0, {}},
      {"no answer",
       Unexpected(Error{.domain = "Centre", .code = 1, .description = "no way to ask"}),
       {},
       0,
       {"[Orlan] Push-auth error: no way to ask"}},
  };
  for (const Row& row : rows) {
    sim::World world;
    sim::SimulatedPhone phone{
        world, {.notifications = {.authorization = Status::notDetermined, .answer = row.answer}}};
    sim::Recorder seen;
    phone.observe(seen);
    const auto manager = makeManager(phone);
    std::vector<Status> heard;
    const auto listening =
        manager->statusPublisher().changes().subscribe([&](Status status) { heard.push_back(status); });
    manager->requestPermission();
    world.settle();
    EXPECT_EQ(heard, row.published) << row.name;
    EXPECT_EQ(seen.remoteRegistrations, row.registrations) << row.name;
    EXPECT_EQ(seen.systemLines, row.systemLines) << row.name;
  }
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

  manager_ = makeManager(phone_);
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
