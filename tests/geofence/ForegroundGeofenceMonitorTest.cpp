#include <gmock/gmock.h>

#include "geofence/Campaigns.hpp"
#include "geofence/GeofenceHost.hpp"
#include "orlan/geofence/ForegroundGeofenceMonitor.hpp"

namespace orlan::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr Coordinate shop{51.5, -0.12};
constexpr Coordinate park{51.52, -0.12};
constexpr Coordinate street{51.51, -0.12};  // in neither

constexpr char found[] = "• 🎯 Enhanced detection - accuracy: 5.0m, confidence: 0.95";

class Delegate final : public ForegroundGeofenceDelegate {
 public:
  std::function<void(bool entered)> heard = [](bool) {};
  void didEnterCampaign(std::int64_t, std::int64_t) override { heard(true); }
  void didExitCampaign(std::int64_t, std::int64_t) override { heard(false); }
};

/// A location service that has a fix on its way when it is told to stop.
class LateFixes final : public LocationService {
 public:
  class Manager final : public LocationManager {
   public:
    std::weak_ptr<LocationManagerDelegate> delegate;
    void setDelegate(std::weak_ptr<LocationManagerDelegate> to) override { delegate = std::move(to); }
    [[nodiscard]] LocationAuthorization authorizationStatus() const override { return {}; }
    void requestWhenInUseAuthorization() override {}
    void requestAlwaysAuthorization() override {}
    void setDesiredAccuracy(double) override {}
    void setDistanceFilter(double) override {}
    void setAllowsBackgroundUpdates(bool) override {}
    void startUpdatingLocation() override {}
    void stopUpdatingLocation() override {}
    void startMonitoringSignificantChanges() override {}
    void stopMonitoringSignificantChanges() override {}
    [[nodiscard]] std::optional<Location> location() const override { return {}; }
    void startMonitoring(const CircularRegion&) override {}
    void stopMonitoring(std::string_view) override {}
    [[nodiscard]] std::vector<CircularRegion> monitoredRegions() const override { return {}; }
  };
  std::shared_ptr<Manager> manager = std::make_shared<Manager>();
  [[nodiscard]] std::shared_ptr<LocationManager> makeManager(std::string_view) override { return manager; }
};

class ForegroundMonitor : public testing::Test {
 protected:
  ForegroundMonitor() {
    monitor_->updatePolygons({{square(shop), campaign(1, 10)}, {square(park), campaign(2, 20)}});
    monitor_->start(nullptr);
    (void)host_.seen();
  }

  std::vector<std::string> go(Coordinate to, double accuracy = 5.0) {
    host_.phone.moveTo(to, accuracy);
    return host_.seen();
  }

  GeofenceHost host_;
  std::unique_ptr<ForegroundGeofenceMonitor> monitor_ = std::make_unique<ForegroundGeofenceMonitor>(
      host_.platform.main, host_.platform.locations, host_.services(), host_.reliability);
};

TEST_F(ForegroundMonitor, StartsAndStopsItsOwnLocationManager) {
  monitor_->stop();
  monitor_->start(nullptr);
  monitor_->start(nullptr);
  EXPECT_THAT(host_.seen(),
              ElementsAre("updates foreground off 10/10", "• 🔴 FG-Monitor stopped",
                          "updates foreground on 10/10", "• 🟢 FG-Monitor started (live GPS)",
                          "updates foreground on 10/10", "• 🟢 FG-Monitor started (live GPS)"));
}

TEST_F(ForegroundMonitor, SaysHowManyPolygonsItLoaded) {
  monitor_->takePolygons({{square(shop), campaign(1, 10)}});
  EXPECT_THAT(host_.seen(), ElementsAre("• 🎯 FG-Monitor loaded 1 polygon geofences"));
}

TEST_F(ForegroundMonitor, AnEntryAndAnExit) {
  EXPECT_THAT(go(street), ElementsAre(found));
  EXPECT_THAT(
      go(shop, 40.0),
      ElementsAre("• 🟢 FG didEnterPolygon camp 1 at 00:00:00.000 (accuracy: 40m)",
                  "• 🔔 FG sendLocalNotifications - activation: ON_ENTER, campaign: 1", "count FG ON_ENTER",
                  "• 🟢 Reporting Geo", "report geofence_entry as location of -1 at 10 (51.5,-0.12)",
                  "report location_update as location of -1 at 10 (51.5,-0.12)",
                  "• 🎯 Enhanced detection - accuracy: 40.0m, confidence: 0.6"));
  EXPECT_THAT(go({51.5005, -0.12}), ElementsAre(found)) << "still inside";
  EXPECT_THAT(
      go(street),
      ElementsAre("• 🔴 FG didExitPolygon camp 1 at 00:00:00.000 (dwell: 0.0s) (accuracy: 5m)",
                  "store Orlan_AppStartTime = 788918400.0",
                  "store Orlan_LastNotification_1_ON_EXIT = 788918400.0",
                  "• 🔔 Allowing ON_EXIT notification for campaign 1 - cooldown passed",
                  "• 🔔 FG sendLocalNotifications - activation: ON_EXIT, campaign: 1", "count FG ON_EXIT",
                  "• 🟢 Reporting Geo", "report geofence_exit as location of -1 at 10 (51.51,-0.12)",
                  "report location_update as location of -1 at 10 (51.51,-0.12)", found));
  EXPECT_THAT(go({51.511, -0.12}), ElementsAre(found)) << "still outside";
}

TEST_F(ForegroundMonitor, RecordsACrossingAsAPendingEvent) {
  go(shop, 30.0);
  // What becomes of an event is drawn at random, but it is kept before it is attempted.
  struct Writes final : phone::PhoneObserver {
    std::vector<std::string> texts;
    void storeWritten(std::string_view key, const json::Value& value) override {
      if (key == "Orlan_PendingEvents" && value.bytes() != nullptr) texts.push_back(value.bytes()->data);
    }
  } observer;
  host_.phone.observe(observer);
  go(street, 30.0);
  EXPECT_THAT(
      observer.texts,
      Contains(HasSubstr(R"("eventType":"geofence_exit","data":{"campaign_id":"1","confidence":"0.7",)"
                         R"("detection_method":"outside_polygon","location_id":"10",)"
                         R"("timestamp":"1767225600.0"})")));
}

TEST_F(ForegroundMonitor, ABatchIsProcessedOnceByItsFirstFix) {
  const Location batch[] = {host_.phone.fixAt(street), host_.phone.fixAt(shop), host_.phone.fixAt(park)};
  host_.phone.locations().deliver(batch);
  EXPECT_THAT(host_.seen(), ElementsAre(found));
}

TEST_F(ForegroundMonitor, FixesWhileStoppedAreIgnoredAndNoSecondEntryFollows) {
  go(shop);
  monitor_->stop();
  EXPECT_THAT(go(street), Not(Contains(found)));
  go(shop);
  monitor_->start(nullptr);
  (void)host_.seen();
  EXPECT_THAT(go({51.5005, -0.12}), ElementsAre(found));
}

TEST_F(ForegroundMonitor, AFixThatComesTooLateAndAnEmptyBatchAreNothing) {
  LateFixes late;
  ForegroundGeofenceMonitor monitor(host_.platform.main, late, host_.services(), host_.reliability);
  monitor.start(nullptr);
  const auto delegate = late.manager->delegate.lock();
  delegate->didUpdateLocations(*late.manager, {});
  monitor.stop();
  (void)host_.seen();
  const Location fix = host_.phone.fixAt(shop);
  delegate->didUpdateLocations(*late.manager, {&fix, 1});
  EXPECT_THAT(host_.seen(), ElementsAre());
}

TEST_F(ForegroundMonitor, WithoutPolygonsAFixStillLogsItsLine) {
  monitor_->updatePolygons({});
  (void)host_.seen();
  EXPECT_THAT(go(shop), ElementsAre("• 🎯 Enhanced detection - accuracy: 5.0m, confidence: 0.0"));
}

TEST_F(ForegroundMonitor, ACampaignThatIsGoneIsLeftSilently) {
  go(shop);
  monitor_->updatePolygons({{square(park), campaign(2, 20)}});
  (void)host_.seen();
  EXPECT_THAT(go(street), ElementsAre(found));
  monitor_->updatePolygons({{square(shop), campaign(1, 10)}});
  EXPECT_THAT(go(shop), Contains(StartsWith("• 🟢 FG didEnterPolygon camp 1")))
      << "so it can be entered anew";
}

TEST_F(ForegroundMonitor, OfSeveralEntriesOfACampaignTheFirstReacts) {
  monitor_->updatePolygons({{square(park), campaign(1, 10)}, {square(shop), campaign(1, 11)}});
  (void)host_.seen();
  EXPECT_THAT(go(shop), Contains("report geofence_entry as location of -1 at 10 (51.5,-0.12)"));
  EXPECT_THAT(go({51.5005, -0.12}), Contains(StartsWith("• 🔴 FG didExitPolygon camp 1")))
      << "the other polygon says outside of the same campaign";
}

TEST_F(ForegroundMonitor, EveryHundredthHopIsLoggedBeforeDetection) {
  for (int hop = 0; hop < 100; ++hop) go({51.51 + hop * 0.0001, -0.11});
  EXPECT_THAT(go(street), ElementsAre("INFO 📍 hop #100 → 51.510000,-0.120000", found));
}

TEST_F(ForegroundMonitor, TellsDelegateAndPublishersInOrder) {
  const auto delegate = std::make_shared<Delegate>();
  delegate->heard = [&](bool entered) {
    host_.transcript.note(entered ? "delegate enter" : "delegate exit");
  };
  monitor_->setDelegate(delegate);
  const auto enters = monitor_->enterPublisher().subscribe([&](const Crossing& at) {
    EXPECT_EQ(at, Crossing(1, 10));
    host_.transcript.note("publish enter");
  });
  const auto exits =
      monitor_->exitPublisher().subscribe([&](const Crossing&) { host_.transcript.note("publish exit"); });
  const auto in = go(shop);
  EXPECT_EQ(in.at(1), "delegate enter");
  EXPECT_EQ(in.at(2), "publish enter");
  const auto out = go(street);
  EXPECT_EQ(out.at(1), "delegate exit");
  EXPECT_EQ(out.at(2), "publish exit");
}

TEST_F(ForegroundMonitor, ADelegateIsHeldWeakly) {
  auto delegate = std::make_shared<Delegate>();
  delegate->heard = [](bool) { ADD_FAILURE(); };
  monitor_->setDelegate(delegate);
  delegate.reset();
  go(shop);
}

TEST_F(ForegroundMonitor, WhoReactsMayStopAndReplaceWhatIsTracked) {
  monitor_->updatePolygons({{square(shop), campaign(1, 10, {notification(5, "ON_ENTER", "Hello")})},
                            {square(shop), campaign(2, 20)}});
  const auto delegate = std::make_shared<Delegate>();
  delegate->heard = [&](bool) {
    monitor_->stop();
    monitor_->updatePolygons({});
    monitor_->setDelegate({});
    monitor_->clearCooldown();
  };
  monitor_->setDelegate(delegate);
  (void)host_.seen();
  const auto seen = go(shop);
  EXPECT_THAT(seen, Contains("scheduled Hello")) << "the reaction goes on with its campaign";
  EXPECT_THAT(seen, Not(Contains(HasSubstr("camp 2")))) << "which is tracked no more";
  EXPECT_THAT(seen, Contains(found));
}

TEST_F(ForegroundMonitor, ASubscriberMayBringTheNextFixInTheMiddleOfOne) {
  int depth = 0;
  const auto heard = monitor_->enterPublisher().subscribe([&](const Crossing&) {
    if (++depth == 1) host_.phone.moveTo(park);
  });
  go(shop);
  EXPECT_EQ(depth, 2);
  EXPECT_THAT(go(street), Contains(StartsWith("• 🔴 FG didExitPolygon camp 1")));
}

TEST_F(ForegroundMonitor, IsNotReachedByFixesAfterItsEnd) {
  monitor_.reset();
  EXPECT_THAT(go(shop), ElementsAre());
}

TEST_F(ForegroundMonitor, PostsAndChecksOnDemand) {
  monitor_->sendLocalNotifications(campaign(1, 10, {notification(5, "on_exit", "Bye")}), "ON_EXIT");
  EXPECT_TRUE(monitor_->shouldSendNotification(1, "ON_EXIT"));
  EXPECT_FALSE(monitor_->shouldSendNotification(1, "ON_EXIT"));
  monitor_->clearCooldown();
  EXPECT_TRUE(monitor_->shouldSendNotification(1, "ON_EXIT"));
  EXPECT_THAT(host_.seen(), Contains("scheduled Bye"));
}

}  // namespace
}  // namespace orlan::test
