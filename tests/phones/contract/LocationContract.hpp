#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "orlan/platform/Platform.hpp"
#include "phones/common/LocationHub.hpp"

namespace orlan {

template <class Phone>
class LocationContract : public ::testing::Test {
 protected:
  using Heard = std::vector<std::string>;

  struct Delegate : LocationManagerDelegate {
    void didChangeAuthorization(LocationManager& m) override {
      heard.push_back("authorization " + std::to_string(rawValue(m.authorizationStatus())));
    }
    void didUpdateLocations(LocationManager& m, std::span<const Location> batch) override {
      EXPECT_EQ(m.location(), batch.back());
      std::string line = "fixes";
      for (const auto& fix : batch) line += " " + std::to_string(std::lround(fix.coordinate.latitude * 1e5));
      heard.push_back(line);
      if (onUpdate) onUpdate();
    }
    void didFail(LocationManager&, const Error& e) override { heard.push_back("error " + e.description); }
    void didEnterRegion(LocationManager&, const CircularRegion& r) override {
      heard.push_back("enter " + r.identifier);
      if (onEnter) onEnter();
    }
    void didExitRegion(LocationManager&, const CircularRegion& r) override {
      heard.push_back("exit " + r.identifier);
    }

    Heard heard;
    std::function<void()> onUpdate, onEnter;
  };

  /// One client with a delegate that has heard its first authorization.
  struct Client {
    std::shared_ptr<LocationManager> manager;
    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
    [[nodiscard]] Heard heard() const { return std::exchange(delegate->heard, {}); }
  };
  Client client(const std::string& name) {
    Client made{phone.platform().locations.makeManager(name)};
    made.manager->setDelegate(made.delegate);
    phone.settle();
    (void)made.heard();
    return made;
  }

  /// `northward` hundred-thousandths of a degree (about 1.11 m each) north of the equator.
  static Location fix(double northward, double accuracy = 5.0) {
    return {{northward * 1e-5, 10.0}, accuracy, {}};
  }
  void deliver(std::vector<Location> batch) { phone.locations().deliver(batch); }
  static CircularRegion region(const std::string& identifier, double northward, double radius) {
    return {identifier, {{northward * 1e-5, 10.0}, radius}};
  }

  Phone phone;
};
TYPED_TEST_SUITE_P(LocationContract);

TYPED_TEST_P(LocationContract, ANewDelegateHearsTheAuthorizationOnceThenEveryChange) {
  auto manager = this->phone.platform().locations.makeManager("test");
  const auto replaced = std::make_shared<typename TestFixture::Delegate>();
  const auto delegate = std::make_shared<typename TestFixture::Delegate>();
  manager->setDelegate(replaced);
  manager->setDelegate(delegate);
  EXPECT_TRUE(delegate->heard.empty());
  this->phone.settle();
  manager->setDelegate(delegate);
  this->phone.settle();
  this->phone.locations().setAuthorization(LocationAuthorization::authorizedAlways);  // as it was
  this->phone.locations().setAuthorization(LocationAuthorization::denied);
  EXPECT_EQ(delegate->heard, (std::vector<std::string>{"authorization 3", "authorization 2"}));
  EXPECT_TRUE(replaced->heard.empty());
}

TYPED_TEST_P(LocationContract, OnlyAnUndecidedPersonIsAsked) {
  const auto client = this->client("test");
  this->phone.locations().setAuthorization(LocationAuthorization::denied);
  client.manager->requestAlwaysAuthorization();
  this->phone.settle();
  EXPECT_EQ(client.manager->authorizationStatus(), LocationAuthorization::denied);
  this->phone.locations().setAuthorization(LocationAuthorization::notDetermined);
  client.manager->requestWhenInUseAuthorization();
  client.manager->requestAlwaysAuthorization();
  EXPECT_EQ(client.manager->authorizationStatus(), LocationAuthorization::notDetermined);
  this->phone.settle();
  EXPECT_EQ(client.heard(),
            (std::vector<std::string>{"authorization 2", "authorization 0", "authorization 3"}));
}

TYPED_TEST_P(LocationContract, EachManagerHasItsOwnDistanceFilter) {
  const auto all = this->client("all");
  const auto ten = this->client("ten");
  ten.manager->setDistanceFilter(10.0);
  all.manager->startUpdatingLocation();
  ten.manager->startUpdatingLocation();
  for (const double northward : {0.0, 8.0, 10.0, 0.0, 30.0}) this->deliver({this->fix(northward)});
  EXPECT_EQ(all.heard(), (std::vector<std::string>{"fixes 0", "fixes 8", "fixes 10", "fixes 0", "fixes 30"}));
  EXPECT_EQ(ten.heard(), (std::vector<std::string>{"fixes 0", "fixes 10", "fixes 0", "fixes 30"}));
}

TYPED_TEST_P(LocationContract, TheDistanceFilterHoldsExactly) {
  const auto client = this->client("test");
  client.manager->startUpdatingLocation();
  const double metres = distance(this->fix(0).coordinate, this->fix(9).coordinate);
  for (const double filter : {std::nextafter(metres, 100.0), metres}) {
    client.manager->setDistanceFilter(distanceFilterNone);
    this->deliver({this->fix(0)});
    client.manager->setDistanceFilter(filter);
    this->deliver({this->fix(9)});
  }
  EXPECT_EQ(client.heard(), (std::vector<std::string>{"fixes 0", "fixes 0", "fixes 9"}));
}

TYPED_TEST_P(LocationContract, StartingAgainChangesNothingButAStopDoes) {
  const auto client = this->client("test");
  client.manager->setDistanceFilter(10.0);
  client.manager->startUpdatingLocation();
  this->deliver({this->fix(0)});
  client.manager->startUpdatingLocation();
  this->deliver({this->fix(1)});
  client.manager->stopUpdatingLocation();
  this->deliver({this->fix(100)});
  client.manager->startUpdatingLocation();
  this->deliver({this->fix(2)});
  EXPECT_EQ(client.heard(), (std::vector<std::string>{"fixes 0", "fixes 2"}));
}

TYPED_TEST_P(LocationContract, ABatchPassesByItsLastFix) {
  const auto client = this->client("test");
  client.manager->setDistanceFilter(10.0);
  client.manager->startUpdatingLocation();
  this->deliver({});
  this->deliver({this->fix(50), this->fix(0)});
  this->deliver({this->fix(100), this->fix(5)});
  this->deliver({this->fix(1), this->fix(20)});
  EXPECT_EQ(client.heard(), (std::vector<std::string>{"fixes 50 0", "fixes 1 20"}));
  EXPECT_EQ(this->phone.locations().position(), this->fix(20));
}

TYPED_TEST_P(LocationContract, FixesThatAreNotValidAreDeliveredAndHoldNobodyBack) {
  const auto client = this->client("test");
  client.manager->setDistanceFilter(10.0);
  client.manager->startUpdatingLocation();
  this->deliver({{{95.0, 10.0}, 5.0, {}}});  // the first passes; no distance is known from there
  this->deliver({this->fix(0, -1.0)});
  this->deliver({{{95.0, 10.0}, 5.0, {}}});
  this->deliver({this->fix(20)});
  EXPECT_EQ(client.heard(), (std::vector<std::string>{"fixes 9500000", "fixes 0", "fixes 20"}));
}

TYPED_TEST_P(LocationContract, SignificantChangesAreFiveHundredMetresApart) {
  const auto client = this->client("test");
  client.manager->startMonitoringSignificantChanges();
  for (const double northward : {0.0, 440.0, 460.0, 900.0, 920.0}) this->deliver({this->fix(northward)});
  EXPECT_EQ(client.heard(), (std::vector<std::string>{"fixes 0", "fixes 460", "fixes 920"}));
  client.manager->startUpdatingLocation();
  this->deliver({this->fix(2000)});  // wanted twice, delivered once
  client.manager->stopMonitoringSignificantChanges();
  client.manager->stopUpdatingLocation();
  this->deliver({this->fix(4000)});
  EXPECT_EQ(client.heard(), (std::vector<std::string>{"fixes 2000"}));
}

TYPED_TEST_P(LocationContract, WithoutAuthorizationNobodyIsToldWhereThePhoneIs) {
  const auto client = this->client("test");
  client.manager->startUpdatingLocation();
  client.manager->startMonitoringSignificantChanges();
  client.manager->startMonitoring(this->region("here", 0, 100));
  for (const auto status : {LocationAuthorization::notDetermined, LocationAuthorization::restricted,
                            LocationAuthorization::denied}) {
    this->phone.locations().setAuthorization(status);
    (void)client.heard();
    this->deliver({this->fix(0)});
    EXPECT_TRUE(client.heard().empty()) << rawValue(status);
  }
  this->phone.locations().setAuthorization(LocationAuthorization::authorizedWhenInUse);
  this->deliver({this->fix(1)});
  EXPECT_EQ(client.heard(), (std::vector<std::string>{"authorization 4", "fixes 1", "enter here"}));
}

TYPED_TEST_P(LocationContract, ErrorsReachWhoeverRuns) {
  const auto running = this->client("running");
  const auto significant = this->client("significant");
  const auto idle = this->client("idle");
  running.manager->startUpdatingLocation();
  significant.manager->startMonitoringSignificantChanges();
  this->phone.locations().fail({"Test", 0, "no signal"});
  EXPECT_EQ(running.heard(), (std::vector<std::string>{"error no signal"}));
  EXPECT_EQ(significant.heard(), (std::vector<std::string>{"error no signal"}));
  EXPECT_TRUE(idle.heard().empty());
}

TYPED_TEST_P(LocationContract, ADelegateMayStopOrEndOthers) {
  auto first = this->client("first");
  auto second = this->client("second");
  auto third = this->client("third");
  for (const auto& each : {first, second, third}) each.manager->startUpdatingLocation();
  first.delegate->onUpdate = [&] {
    second.manager->stopUpdatingLocation();
    third.manager.reset();
    first.manager->setDelegate({});
  };
  this->deliver({this->fix(0)});
  this->deliver({this->fix(100)});
  EXPECT_EQ(first.heard(), (std::vector<std::string>{"fixes 0"}));
  EXPECT_TRUE(second.heard().empty());
  EXPECT_TRUE(third.heard().empty());
}

TYPED_TEST_P(LocationContract, RegionsAreJudgedAfterTheFixAndBelongToAll) {
  auto one = this->client("one");
  const auto two = this->client("two");
  two.manager->startUpdatingLocation();
  one.manager->startMonitoring(this->region("here", 0, 100));
  one.manager->startMonitoring(this->region("nowhere", std::nan(""), 100));
  EXPECT_EQ(two.manager->monitoredRegions(), (std::vector<CircularRegion>{this->region("here", 0, 100)}));
  this->deliver({this->fix(0)});
  EXPECT_EQ(one.heard(), (std::vector<std::string>{"enter here"}));
  EXPECT_EQ(two.heard(), (std::vector<std::string>{"fixes 0", "enter here"}));
  one.manager.reset();  // the region stays
  this->deliver({this->fix(1000)});
  EXPECT_EQ(two.heard(), (std::vector<std::string>{"fixes 1000", "exit here"}));
  two.manager->stopMonitoring("here");
  this->deliver({this->fix(0)});
  EXPECT_EQ(two.heard(), (std::vector<std::string>{"fixes 0"}));
}

TYPED_TEST_P(LocationContract, ARegionThatADelegateStopsIsNotReportedAnyMore) {
  const auto client = this->client("test");
  client.manager->startUpdatingLocation();
  client.manager->startMonitoring(this->region("first", 0, 100));
  client.manager->startMonitoring(this->region("second", 0, 100));
  client.delegate->onEnter = [&] { client.manager->stopMonitoring("second"); };
  this->deliver({this->fix(0)});
  EXPECT_EQ(client.heard(), (std::vector<std::string>{"fixes 0", "enter first"}));
}

TYPED_TEST_P(LocationContract, TheOperatingSystemsReportsAreBelieved) {
  const auto client = this->client("test");
  client.manager->startMonitoring(this->region("known", 0, 100));
  this->phone.locations().enterRegion("known");
  this->phone.locations().exitRegion("unknown");
  this->deliver({this->fix(1)});  // inside already
  this->deliver({this->fix(1000)});
  EXPECT_EQ(client.heard(), (std::vector<std::string>{"enter known", "exit unknown", "exit known"}));
}

REGISTER_TYPED_TEST_SUITE_P(LocationContract, ANewDelegateHearsTheAuthorizationOnceThenEveryChange,
                            OnlyAnUndecidedPersonIsAsked, EachManagerHasItsOwnDistanceFilter,
                            TheDistanceFilterHoldsExactly, StartingAgainChangesNothingButAStopDoes,
                            ABatchPassesByItsLastFix, FixesThatAreNotValidAreDeliveredAndHoldNobodyBack,
                            SignificantChangesAreFiveHundredMetresApart,
                            WithoutAuthorizationNobodyIsToldWhereThePhoneIs, ErrorsReachWhoeverRuns,
                            ADelegateMayStopOrEndOthers, RegionsAreJudgedAfterTheFixAndBelongToAll,
                            ARegionThatADelegateStopsIsNotReportedAnyMore,
                            TheOperatingSystemsReportsAreBelieved);

}  // namespace orlan
