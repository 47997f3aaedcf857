#include <gmock/gmock.h>

#include "orlan/sdk/LocationPermissionManager.hpp"
#include "support/NotingLocations.hpp"
#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using test::SimulatedHost;
using ::testing::ElementsAre;

class LocationPermission : public ::testing::Test {
 protected:
  void configure(LocationAuthorization status) {
    sim::PhoneSettings settings;
    settings.location.authorization = status;
    host.emplace(std::move(settings));
    manager().configure();
    host->world.settle();
  }
  LocationPermissionManager& manager() { return *host->services().locationPermission; }

  std::optional<Location> lastLocation() {
    std::optional<Location> last;
    (void)manager().lastLocationPublisher().subscribe([&](const auto& now) { last = now; });
    return last;
  }

  /// What the location service was asked to do since the last look.
  std::vector<std::string> asked() { return std::exchange(host->seen.lines, {}); }

  std::optional<SimulatedHost> host;
};

TEST_F(LocationPermission, UpdatesFollowAuthorizationAndApplicationState) {
  using Status = LocationAuthorization;
  using Lines = std::vector<std::string>;
  const std::string on = "updates permission on 10.0 10.0";
  const std::string off = "updates permission off 10.0 10.0";
  const std::string significantOn = "significant changes permission on";
  const std::string significantOff = "significant changes permission off";
  struct Row {
    Status status;
    Lines configured, inBackground, inFront;
  };
  const Row rows[] = {
      {Status::notDetermined, {off}, {}, {}},
      {Status::restricted, {off}, {}, {}},
      {Status::denied, {off}, {}, {}},
      {Status::authorizedAlways, {on}, {off, significantOn}, {significantOff, on}},
      {Status::authorizedWhenInUse, {on}, {}, {significantOff, on}},
  };
  for (const Row& row : rows) {
    configure(row.status);
    EXPECT_EQ(manager().currentStatus(), row.status);
    EXPECT_EQ(asked(), row.configured) << rawValue(row.status);
    host->phone.application().raise(ApplicationSignal::didEnterBackground);
    EXPECT_EQ(asked(), row.inBackground) << rawValue(row.status);
    host->phone.application().raise(ApplicationSignal::willEnterForeground);
    EXPECT_EQ(asked(), row.inFront) << rawValue(row.status);
  }
}

TEST_F(LocationPermission, ConfiguringAgainOnlyPublishesTheStatus) {
  configure(LocationAuthorization::authorizedAlways);
  std::vector<LocationAuthorization> heard;
  const auto listening = manager().statusPublisher().subscribe(
      [&](const LocationAuthorization& status) { heard.push_back(status); });
  heard.clear();
  (void)asked();
  manager().configure();
  EXPECT_THAT(heard, ElementsAre(LocationAuthorization::authorizedAlways));
  host->phone.application().raise(ApplicationSignal::didEnterBackground);
  EXPECT_EQ(asked().size(), 2u) << "one observer, not two";
}

TEST_F(LocationPermission, ALostPermissionTakesTheLocationWithIt) {
  configure(LocationAuthorization::authorizedAlways);
  const Location fixes[] = {host->phone.fixAt({1, 1}), host->phone.fixAt({51.5, -0.12})};
  host->phone.locations().deliver(fixes);
  EXPECT_EQ(lastLocation(), std::nullopt) << "published on the next turn";
  host->world.settle();
  ASSERT_TRUE(lastLocation());
  EXPECT_EQ(lastLocation()->coordinate, (Coordinate{51.5, -0.12}));
  host->phone.locations().setAuthorization(LocationAuthorization::denied);
  host->world.settle();
  EXPECT_EQ(manager().currentStatus(), LocationAuthorization::denied);
  EXPECT_EQ(lastLocation(), std::nullopt);
}

TEST_F(LocationPermission, IsCoarseAndSaysSoAgainWheneverTheApplicationComesToTheFront) {
  host.emplace();
  const Platform platform = host->phone.platform();
  test::NotingLocations locations;
  LocationPermissionManager permission(platform.main, locations, platform.application, platform.systemLog);
  permission.configure();
  host->phone.application().raise(ApplicationSignal::willEnterForeground);
  EXPECT_THAT(
      locations.manager->settings,
      ElementsAre("accuracy 10.0", "filter 10.0", "in the background too", "accuracy 10.0", "filter 10.0"));
}

}  // namespace
}  // namespace orlan
