// What the library does itself where a host's phone leaves something out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "c/MiniPhone.h"
#include "orlan/c/Phone.hpp"

namespace orlan {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Ear final : LocationManagerDelegate {
  void didChangeAuthorization(LocationManager& manager) override {
    heard.push_back("authorization " + std::to_string(rawValue(manager.authorizationStatus())));
  }
  void didUpdateLocations(LocationManager&, std::span<const Location> fixes) override {
    heard.push_back("fixes " + std::to_string(fixes.size()));
  }
  void didEnterRegion(LocationManager&, const CircularRegion& region) override {
    heard.push_back("enter " + region.identifier);
  }
  std::vector<std::string> heard;
};

class Defaults : public ::testing::Test {
 protected:
  ~Defaults() override { EXPECT_EQ(mini_free(phone), ORLAN_OK); }
  mini_phone* const phone = mini_new();
  const Platform platform = c::phoneOf(phone->handle)->platform();
};

TEST_F(Defaults, FixesForAllPassTheFiltersOfThoseThatRun) {
  const auto ear = std::make_shared<Ear>();
  const auto manager = platform.locations.makeManager("test");
  EXPECT_EQ(manager->location(), std::nullopt);
  manager->setDelegate(ear);
  mini_run_for(phone, 1);
  EXPECT_THAT(ear->heard, ElementsAre("authorization 3"));
  ear->heard.clear();
  manager->setDistanceFilter(100);
  EXPECT_EQ(mini_move_to(phone, 51.5, 0), ORLAN_OK);
  EXPECT_THAT(ear->heard, IsEmpty()) << "nothing runs";
  const struct {
    const char* name;
    double latitude;
    std::size_t fixes;
  } rows[] = {{"the first", 51.5, 1},
              {"too near", 51.5005, 0},
              {"far enough", 51.501, 1},
              {"no place", std::nan(""), 0},
              {"on from before", 51.502, 1}};
  manager->startUpdatingLocation();
  for (const auto& row : rows) {
    ear->heard.clear();
    EXPECT_EQ(mini_move_to(phone, row.latitude, 0), ORLAN_OK);
    EXPECT_EQ(ear->heard.size(), row.fixes) << row.name;
  }
  phone->location_authorization = ORLAN_LOCATION_DENIED;
  ear->heard.clear();
  mini_move_to(phone, 51.6, 0);
  EXPECT_THAT(ear->heard, IsEmpty()) << "the person said no";
  phone->location_authorization = ORLAN_LOCATION_WHEN_IN_USE;
  manager->stopUpdatingLocation();
  manager->startMonitoringSignificantChanges();
  ear->heard.clear();
  for (const double latitude : {51.5, 51.504, 51.506}) mini_move_to(phone, latitude, 0);
  EXPECT_EQ(ear->heard.size(), 2U) << "the first, and the one 500 m on";
  EXPECT_EQ(manager->location()->coordinate, (Coordinate{51.506, 0}));
}

TEST_F(Defaults, TwentyRegionsAreKeptAndCrossingsAreHeard) {
  const auto ear = std::make_shared<Ear>();
  const auto manager = platform.locations.makeManager("test");
  manager->setDelegate(ear);
  for (int i = 0; i < 21; ++i) manager->startMonitoring({std::to_string(i), {{51.5, 0}, 100}});
  manager->startMonitoring({"0", {{51.5, 0}, 200}});
  manager->startMonitoring({"1", {{std::nan(""), 0}, 100}});
  EXPECT_EQ(manager->monitoredRegions().size(), 20U);
  EXPECT_EQ(manager->monitoredRegions().front().circle.radius, 200);
  manager->stopMonitoring("0");
  EXPECT_EQ(platform.locations.makeManager("other")->monitoredRegions().size(), 19U);
  const orlan_region region{orlan_str("1"), {{51.5, 0}, 100}, true, true};
  EXPECT_EQ(orlan_phone_region_entered(phone->handle, ORLAN_ALL_MANAGERS, &region), ORLAN_OK);
  EXPECT_EQ(orlan_phone_region_entered(phone->handle, 999, &region), ORLAN_OK);
  EXPECT_THAT(ear->heard, ElementsAre("enter 1"));
}

TEST_F(Defaults, TheApplicationRaisesWhatLiesOnTheWay) {
  std::vector<std::string> raised;
  SubscriptionBag bag;
  const char* const names[] = {"background", "foreground", "active", "resign"};
  for (int i = 0; i < 4; ++i) {
    bag.add(platform.application.observe(static_cast<ApplicationSignal>(i), [&raised, &names, i, this] {
      raised.push_back(names[i] + std::to_string(static_cast<int>(platform.application.state())));
    }));
  }
  for (const int state : {ORLAN_STATE_BACKGROUND, ORLAN_STATE_BACKGROUND, ORLAN_STATE_ACTIVE}) {
    EXPECT_EQ(orlan_phone_move_to(phone->handle, state), ORLAN_OK);
  }
  EXPECT_EQ(orlan_phone_signal(phone->handle, ORLAN_DID_BECOME_ACTIVE), ORLAN_OK);
  EXPECT_THAT(raised, ElementsAre("resign1", "background2", "foreground2", "active0", "active0"));
}

TEST_F(Defaults, NotificationsAreAllowedAndAnsweredLater) {
  std::vector<std::string> answers;
  platform.notifications.requestAuthorization(
      7, [&](const Result<bool>& granted) { answers.emplace_back(granted && *granted ? "granted" : "no"); });
  platform.notifications.authorizationStatus(
      [&](NotificationAuthorization status) { answers.push_back(std::to_string(rawValue(status))); });
  platform.notifications.add(
      {"n", {"T"}}, [&](const Result<void>& done) { answers.emplace_back(done ? "added" : "not added"); });
  EXPECT_THAT(answers, IsEmpty());
  mini_run_for(phone, 1);
  EXPECT_THAT(answers, ElementsAre("granted", "2", "added"));
  orlan_notification arrives{};
  arrives.struct_size = sizeof arrives;
  std::uint32_t shown = 99;
  EXPECT_EQ(
      orlan_phone_present(
          phone->handle, &arrives,
          [](void* bits, std::uint32_t options) { *static_cast<std::uint32_t*>(bits) = options; }, &shown),
      ORLAN_OK);
  EXPECT_EQ(shown, 0U) << "nobody in the library to ask";
}

}  // namespace
}  // namespace orlan
