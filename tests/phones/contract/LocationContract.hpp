#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "orlan/base/text.hpp"
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

TYPED_TEST_P(LocationContract, TheDistanceFilterCountsFromTheLastOneDelivered) {
  const double exact = distance(this->fix(0).coordinate, this->fix(9).coordinate);
  const struct {
    const char* name;
    double filter;
    std::vector<const char*> steps;  // a batch of places northward
    std::vector<std::string> heard;
  } rows[] = {
      {"none", distanceFilterNone, {"0", "8", "8"}, {"fixes 0", "fixes 8", "fixes 8"}},
      {"ten metres", 10.0, {"0", "8", "10", "0", "30"}, {"fixes 0", "fixes 10", "fixes 0", "fixes 30"}},
      {"exactly as far", exact, {"0", "9"}, {"fixes 0", "fixes 9"}},
      {"not quite", std::nextafter(exact, 100.0), {"0", "9"}, {"fixes 0"}},
      {"starting again changes nothing", 10.0, {"0", "start", "1"}, {"fixes 0"}},
      {"a stop does", 10.0, {"0", "stop", "100", "start", "2"}, {"fixes 0", "fixes 2"}},
      {"a batch passes by its last", 10.0, {"50 0", "", "100 5", "1 20"}, {"fixes 50 0", "fixes 1 20"}},
      {"no distance is known",
       10.0,
       {"9500000", "0", "9500000", "20"},
       {"fixes 9500000", "fixes 0", "fixes 20"}},
  };
  const auto other = this->client("other");  // has a filter of its own
  other.manager->startUpdatingLocation();
  for (const auto& row : rows) {
    const auto client = this->client("test");
    client.manager->setDistanceFilter(row.filter);
    client.manager->startUpdatingLocation();
    for (const std::string step : row.steps) {
      if (step == "start") client.manager->startUpdatingLocation();
      if (step == "stop") client.manager->stopUpdatingLocation();
      if (step.starts_with("st")) continue;
      std::vector<Location> batch;
      for (const auto& place : text::split(step, ' ')) batch.push_back(this->fix(std::stod(place)));
      this->deliver(batch);
    }
    EXPECT_EQ(client.heard(), row.heard) << row.name;
  }
  EXPECT_EQ(other.heard().size(), 24U);
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
                            OnlyAnUndecidedPersonIsAsked, TheDistanceFilterCountsFromTheLastOneDelivered,
                            SignificantChangesAreFiveHundredMetresApart,
                            WithoutAuthorizationNobodyIsToldWhereThePhoneIs, ErrorsReachWhoeverRuns,
                            ADelegateMayStopOrEndOthers, RegionsAreJudgedAfterTheFixAndBelongToAll,
                            ARegionThatADelegateStopsIsNotReportedAnyMore,
                            TheOperatingSystemsReportsAreBelieved);

}  // namespace orlan
