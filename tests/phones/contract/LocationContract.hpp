#pragma once

#include <gtest/gtest.h>

#include <algorithm>
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
  struct Delegate : LocationManagerDelegate {
    void didChangeAuthorization(LocationManager& m) override {
      hear("authorization " + std::to_string(rawValue(m.authorizationStatus())));
    }
    void didUpdateLocations(LocationManager& m, std::span<const Location> batch) override {
      EXPECT_EQ(m.location(), batch.back());
      std::string line = "at";
      for (const auto& fix : batch) line += " " + std::to_string(std::lround(fix.coordinate.latitude * 1e5));
      hear(line);
      if (onUpdate) onUpdate();
    }
    void didFail(LocationManager&, const Error& e) override { hear(e.description); }
    void didEnterRegion(LocationManager&, const CircularRegion& r) override {
      hear("enter " + r.identifier);
      if (onEnter) onEnter();
    }
    void didExitRegion(LocationManager&, const CircularRegion& r) override { hear("exit " + r.identifier); }
    void hear(const std::string& what) { heard += (heard.empty() ? "" : ", ") + what; }

    std::string heard;
    std::function<void()> onUpdate, onEnter;
  };

  /// One client with a delegate that has heard its first authorization.
  struct Client {
    std::shared_ptr<LocationManager> manager;
    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>();
    LocationManager* operator->() const { return manager.get(); }
    [[nodiscard]] std::string heard() const { return std::exchange(delegate->heard, {}); }
  };
  Client client() {
    Client made{phone.platform().locations.makeManager("test")};
    made->setDelegate(made.delegate);
    phone.settle();
    (void)made.heard();
    return made;
  }

  /// A batch of fixes, each so many hundred-thousandths of a degree (about 1.11 m) north of the equator.
  void deliver(const std::vector<double>& northward) {
    std::vector<Location> batch;
    for (const double each : northward) batch.push_back({at(each), 5.0, {}});
    hub.deliver(batch);
  }
  static Coordinate at(double northward) { return {northward * 1e-5, 10.0}; }
  static CircularRegion region(const std::string& identifier, double northward = 0) {
    return {identifier, {at(northward), 100}};
  }

  Phone phone;
  phone::LocationHub& hub = phone.locations();
};
TYPED_TEST_SUITE_P(LocationContract);

TYPED_TEST_P(LocationContract, ANewDelegateHearsTheAuthorizationOnceThenEveryChange) {
  const auto manager = this->phone.platform().locations.makeManager("test");
  const auto replaced = std::make_shared<typename TestFixture::Delegate>();
  const auto delegate = std::make_shared<typename TestFixture::Delegate>();
  for (const auto& each : {replaced, delegate}) manager->setDelegate(each);
  EXPECT_EQ(delegate->heard, "");
  this->phone.settle();
  manager->setDelegate(delegate);
  this->phone.settle();
  this->hub.setAuthorization(LocationAuthorization::authorizedAlways);  // as it was
  this->hub.setAuthorization(LocationAuthorization::denied);
  EXPECT_EQ(delegate->heard, "authorization 3, authorization 2");
  EXPECT_EQ(replaced->heard, "");
}

TYPED_TEST_P(LocationContract, OnlyAnUndecidedPersonIsAsked) {
  const auto client = this->client();
  for (const auto status : {LocationAuthorization::denied, LocationAuthorization::notDetermined}) {
    this->hub.setAuthorization(status);
    client->requestWhenInUseAuthorization();
    client->requestAlwaysAuthorization();
    EXPECT_EQ(client->authorizationStatus(), status);
    this->phone.settle();
  }
  EXPECT_EQ(client.heard(), "authorization 2, authorization 0, authorization 3");
}

TYPED_TEST_P(LocationContract, TheDistanceFilterCountsFromTheLastOneDelivered) {
  const double exact = distance(this->at(0), this->at(9));
  const struct {
    const char* name;
    double filter;
    std::vector<std::string> steps;  // batches of places northward
    const char* heard;
  } rows[] = {
      {"none", distanceFilterNone, {"0", "8", "8"}, "at 0, at 8, at 8"},
      {"ten metres", 10.0, {"0", "8", "10", "0", "30"}, "at 0, at 10, at 0, at 30"},
      {"exactly as far", exact, {"0", "9"}, "at 0, at 9"},
      {"not quite", std::nextafter(exact, 100.0), {"0", "9"}, "at 0"},
      {"starting again changes nothing", 10.0, {"0", "start", "1"}, "at 0"},
      {"a stop does", 10.0, {"0", "stop", "100", "start", "2"}, "at 0, at 2"},
      {"a batch passes by its last", 10.0, {"50 0", "", "100 5", "1 20"}, "at 50 0, at 1 20"},
      {"no distance known", 10.0, {"9500000", "0", "9500000", "20"}, "at 9500000, at 0, at 20"},
  };
  const auto other = this->client();  // has a filter of its own
  other->startUpdatingLocation();
  for (const auto& row : rows) {
    const auto client = this->client();
    client->setDistanceFilter(row.filter);
    client->startUpdatingLocation();
    for (const auto& step : row.steps) {
      if (step == "start") client->startUpdatingLocation();
      if (step == "stop") client->stopUpdatingLocation();
      if (step.starts_with("st")) continue;
      std::vector<double> batch;
      for (const auto& place : text::split(step, ' ')) batch.push_back(std::stod(place));
      this->deliver(batch);
    }
    EXPECT_EQ(client.heard(), row.heard) << row.name;
  }
  EXPECT_EQ(std::ranges::count(other.heard(), 'a'), 24);
}

TYPED_TEST_P(LocationContract, SignificantChangesAreFiveHundredMetresApart) {
  const auto client = this->client();
  const auto idle = this->client();
  client->startMonitoringSignificantChanges();
  for (const double northward : {0, 440, 460, 900, 920}) this->deliver({northward});
  client->startUpdatingLocation();
  this->deliver({2000});  // wanted twice, delivered once
  client->stopUpdatingLocation();
  this->hub.fail({"Test", 0, "no signal"});
  client->stopMonitoringSignificantChanges();
  this->deliver({4000});
  this->hub.fail({"Test", 0, "told to nobody"});
  EXPECT_EQ(client.heard(), "at 0, at 460, at 920, at 2000, no signal");
  EXPECT_EQ(idle.heard(), "");
}

TYPED_TEST_P(LocationContract, WithoutAuthorizationNobodyIsToldWhereThePhoneIs) {
  const auto client = this->client();
  client->startUpdatingLocation();
  client->startMonitoringSignificantChanges();
  client->startMonitoring(this->region("here"));
  for (const auto status : {LocationAuthorization::notDetermined, LocationAuthorization::restricted,
                            LocationAuthorization::denied}) {
    this->hub.setAuthorization(status);
    this->deliver({0});
  }
  EXPECT_EQ(client.heard(), "authorization 0, authorization 1, authorization 2");
  this->hub.setAuthorization(LocationAuthorization::authorizedWhenInUse);
  this->deliver({1});
  EXPECT_EQ(client.heard(), "authorization 4, at 1, enter here");
}

TYPED_TEST_P(LocationContract, ADelegateMayStopOrEndOthers) {
  const auto first = this->client(), second = this->client();
  auto third = this->client();
  for (const auto& each : {first, second, third}) each->startUpdatingLocation();
  first.delegate->onUpdate = [&] {
    second->stopUpdatingLocation();
    third.manager.reset();
  };
  for (const char* name : {"one", "other"}) first->startMonitoring(this->region(name));
  first.delegate->onEnter = [&] {
    first->stopMonitoring("other");
    first->setDelegate({});
  };
  this->deliver({0});
  this->deliver({100});
  EXPECT_EQ(first.heard(), "at 0, enter one");
  EXPECT_EQ(second.heard(), "enter one, exit one");
  EXPECT_EQ(third.heard(), "");
}

TYPED_TEST_P(LocationContract, RegionsAreJudgedAfterTheFixAndBelongToAll) {
  auto one = this->client();
  const auto two = this->client();
  two->startUpdatingLocation();
  one->startMonitoring(this->region("here"));
  one->startMonitoring(this->region("nowhere", std::nan("")));
  EXPECT_EQ(two->monitoredRegions(), (std::vector<CircularRegion>{this->region("here")}));
  this->deliver({0});
  EXPECT_EQ(one.heard(), "enter here");
  one.manager.reset();  // the region stays
  this->deliver({1000});
  two->stopMonitoring("here");
  this->deliver({0});
  EXPECT_EQ(two.heard(), "at 0, enter here, at 1000, exit here, at 0");
}

TYPED_TEST_P(LocationContract, TheOperatingSystemsReportsAreBelieved) {
  const auto client = this->client();
  client->startMonitoring(this->region("known"));
  this->hub.enterRegion("known");
  this->hub.exitRegion("unknown");
  this->deliver({1});  // inside already
  this->deliver({1000});
  EXPECT_EQ(client.heard(), "enter known, exit unknown, exit known");
}

REGISTER_TYPED_TEST_SUITE_P(LocationContract, ANewDelegateHearsTheAuthorizationOnceThenEveryChange,
                            OnlyAnUndecidedPersonIsAsked, TheDistanceFilterCountsFromTheLastOneDelivered,
                            SignificantChangesAreFiveHundredMetresApart,
                            WithoutAuthorizationNobodyIsToldWhereThePhoneIs, ADelegateMayStopOrEndOthers,
                            RegionsAreJudgedAfterTheFixAndBelongToAll, TheOperatingSystemsReportsAreBelieved);

}  // namespace orlan
