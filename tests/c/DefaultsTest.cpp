// What the library does itself where a host's phone leaves something out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "c/TablesOverSimulated.hpp"

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
  void moveTo(double latitude) {
    const orlan_location fix{{latitude, 0}, 5, 0};
    EXPECT_EQ(orlan_phone_fixes(host.handle, ORLAN_ALL_MANAGERS, &fix, 1), ORLAN_OK);
  }

  std::int32_t authorized = ORLAN_LOCATION_ALWAYS;
  const orlan_location_functions location{sizeof location, &authorized,
                                          [](void* status) { return *static_cast<std::int32_t*>(status); }};
  test::TablesOverSimulated host{[this](orlan_phone_parts& parts) {
    test::TablesOverSimulated::bare(parts);
    parts.location = &location;
  }};
  const Platform platform = host.platform();
};

TEST_F(Defaults, FixesForAllPassTheFiltersOfThoseThatRun) {
  const auto ear = std::make_shared<Ear>();
  const auto manager = platform.locations.makeManager("test");
  EXPECT_EQ(manager->location(), std::nullopt);
  manager->setDelegate(ear);
  host.pass();
  EXPECT_THAT(ear->heard, ElementsAre("authorization 3"));
  ear->heard.clear();
  manager->setDistanceFilter(100);
  moveTo(51.5);
  EXPECT_THAT(ear->heard, IsEmpty()) << "nothing runs";
  manager->startUpdatingLocation();
  for (const double latitude : {51.5, 51.5005, 51.501}) moveTo(latitude);
  EXPECT_THAT(ear->heard, ElementsAre("fixes 1", "fixes 1")) << "one is too near";
  authorized = ORLAN_LOCATION_DENIED;
  ear->heard.clear();
  moveTo(51.6);
  EXPECT_THAT(ear->heard, IsEmpty()) << "the person said no";
  authorized = ORLAN_LOCATION_WHEN_IN_USE;
  manager->stopUpdatingLocation();
  manager->startMonitoringSignificantChanges();
  ear->heard.clear();
  for (const double latitude : {51.5, 51.504, 51.506}) moveTo(latitude);
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
  EXPECT_EQ(orlan_phone_region_entered(host.handle, ORLAN_ALL_MANAGERS, &region), ORLAN_OK);
  EXPECT_EQ(orlan_phone_region_entered(host.handle, 999, &region), ORLAN_OK);
  EXPECT_THAT(ear->heard, ElementsAre("enter 1"));
}

TEST_F(Defaults, TheApplicationsStateIsWhatTheHostSaid) {
  std::vector<std::string> raised;
  const auto note = [&](const char* signal) {
    return [&raised, signal, this] {
      raised.push_back(signal + std::to_string(static_cast<int>(platform.application.state())));
    };
  };
  const auto resigns = platform.application.observe(ApplicationSignal::willResignActive, note("resign"));
  const auto enters = platform.application.observe(ApplicationSignal::didEnterBackground, note("enter"));
  EXPECT_EQ(orlan_phone_move_to(host.handle, ORLAN_STATE_BACKGROUND), ORLAN_OK);
  EXPECT_EQ(orlan_phone_signal(host.handle, ORLAN_DID_ENTER_BACKGROUND), ORLAN_OK);
  EXPECT_THAT(raised, ElementsAre("resign1", "enter2", "enter2"));
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
  host.pass();
  EXPECT_THAT(answers, ElementsAre("granted", "2", "added"));
  orlan_notification arrives{};
  arrives.struct_size = sizeof arrives;
  std::uint32_t shown = 99;
  EXPECT_EQ(
      orlan_phone_present(
          host.handle, &arrives,
          [](void* bits, std::uint32_t options) { *static_cast<std::uint32_t*>(bits) = options; }, &shown),
      ORLAN_OK);
  EXPECT_EQ(shown, 0U) << "nobody in the library to ask";
}

}  // namespace
}  // namespace orlan
