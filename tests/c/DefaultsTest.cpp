// What the library does itself where a host's phone leaves something out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "c/TablesOverSimulated.hpp"
#include "orlan/base/text.hpp"

namespace orlan {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Listener final : LocationManagerDelegate {
  explicit Listener(std::vector<std::string>& to) : heard(to) {}
  void didChangeAuthorization(LocationManager&) override { heard.emplace_back("authorization"); }
  void didUpdateLocations(LocationManager&, std::span<const Location> fixes) override {
    heard.push_back(text::fromDouble(fixes.back().coordinate.latitude));
  }
  void didEnterRegion(LocationManager&, const CircularRegion& region) override {
    heard.push_back("enter " + region.identifier);
  }
  std::vector<std::string>& heard;
};

class Defaults : public ::testing::Test {
 protected:
  void moveTo(const std::vector<double>& latitudes) {
    for (const double latitude : latitudes) {
      const orlan_location fix{{latitude, 0}, 5, 0};
      EXPECT_EQ(orlan_phone_fixes(host.handle, ORLAN_ALL_MANAGERS, &fix, 1), ORLAN_OK);
    }
  }
  /// What was heard since the last look, once all that was posted has run.
  std::vector<std::string> heard() {
    host.world.settle();
    return std::exchange(heard_, {});
  }

  std::int32_t authorized = ORLAN_LOCATION_ALWAYS;
  const orlan_location_functions location{sizeof location, &authorized,
                                          [](void* status) { return *static_cast<std::int32_t*>(status); }};
  test::TablesOverSimulated host{[this](orlan_phone_parts& parts) {
    test::TablesOverSimulated::bare(parts);
    parts.location = &location;
  }};
  const Platform platform = host.platform();
  std::vector<std::string> heard_;
  const std::shared_ptr<Listener> listener = std::make_shared<Listener>(heard_);
  const std::shared_ptr<LocationManager> manager = platform.locations.makeManager("test");
};

TEST_F(Defaults, FixesForAllPassTheFiltersOfThoseThatRun) {
  EXPECT_EQ(manager->location(), std::nullopt);
  manager->setDelegate(listener);
  manager->setDistanceFilter(100);
  moveTo({51.5});
  EXPECT_THAT(heard(), ElementsAre("authorization")) << "nothing runs";
  manager->startUpdatingLocation();
  moveTo({51.5, 51.5005, 51.501});
  EXPECT_THAT(heard(), ElementsAre("51.5", "51.501")) << "one is too near";
  authorized = ORLAN_LOCATION_DENIED;
  moveTo({51.6});
  EXPECT_THAT(heard(), IsEmpty()) << "the person said no";
  authorized = ORLAN_LOCATION_WHEN_IN_USE;
  manager->stopUpdatingLocation();
  manager->startMonitoringSignificantChanges();
  moveTo({51.5, 51.504, 51.506});
  EXPECT_THAT(heard(), ElementsAre("51.5", "51.506")) << "500 m on";
  EXPECT_EQ(manager->location()->coordinate, (Coordinate{51.506, 0}));
}

TEST_F(Defaults, TwentyRegionsAreKeptAndCrossingsAreHeard) {
  manager->setDelegate(listener);
  for (int i = 0; i < 21; ++i) manager->startMonitoring({std::to_string(i), {{51.5, 0}, 100}});
  manager->startMonitoring({"0", {{51.5, 0}, 200}});
  EXPECT_EQ(manager->monitoredRegions().size(), 20U);
  EXPECT_EQ(manager->monitoredRegions().front().circle.radius, 200);
  manager->stopMonitoring("0");
  EXPECT_EQ(platform.locations.makeManager("other")->monitoredRegions().size(), 19U);
  const orlan_region region{orlan_str("1"), {{51.5, 0}, 100}, true, true};
  EXPECT_EQ(orlan_phone_region_entered(host.handle, ORLAN_ALL_MANAGERS, &region), ORLAN_OK);
  EXPECT_EQ(orlan_phone_region_entered(host.handle, 999, &region), ORLAN_OK);
  EXPECT_THAT(heard(), ElementsAre("enter 1", "authorization"));
}

TEST_F(Defaults, TheApplicationsStateIsWhatTheHostSaid) {
  const auto enters = platform.application.observe(ApplicationSignal::didEnterBackground, [this] {
    heard_.push_back(std::to_string(static_cast<int>(platform.application.state())));
  });
  EXPECT_EQ(orlan_phone_move_to(host.handle, ORLAN_STATE_BACKGROUND), ORLAN_OK);
  EXPECT_EQ(orlan_phone_signal(host.handle, ORLAN_DID_ENTER_BACKGROUND), ORLAN_OK);
  EXPECT_THAT(heard(), ElementsAre("2", "2"));
}

TEST_F(Defaults, NotificationsAreAllowedAndAnsweredLater) {
  platform.notifications.requestAuthorization(
      7, [&](const Result<bool>& granted) { heard_.emplace_back(granted && *granted ? "granted" : "no"); });
  platform.notifications.authorizationStatus(
      [&](NotificationAuthorization status) { heard_.push_back(std::to_string(rawValue(status))); });
  platform.notifications.add(
      {"n", {"T"}}, [&](const Result<void>& done) { heard_.emplace_back(done ? "added" : "not added"); });
  EXPECT_THAT(heard_, IsEmpty());
  EXPECT_THAT(heard(), ElementsAre("granted", "2", "added"));
  const orlan_notification arrives{sizeof arrives};
  test::Ear ear;
  EXPECT_EQ(orlan_phone_present(host.handle, &arrives, test::hears, &ear), ORLAN_OK);
  EXPECT_THAT(ear.heard, ElementsAre("0")) << "nobody in the library to ask";
}

}  // namespace
}  // namespace orlan
