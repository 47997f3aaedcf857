#include <gmock/gmock.h>

#include "geofence/Campaigns.hpp"
#include "orlan/geofence/ForegroundGeofenceMonitor.hpp"
#include "support/FloorHost.hpp"
#include "support/NotingLocations.hpp"

namespace orlan::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr Coordinate shop{51.5, -0.12};
constexpr Coordinate park{51.52, -0.12};
constexpr Coordinate street{51.51, -0.12};  // in neither

constexpr char found[] = "• 🎯 Enhanced detection - accuracy: 5.0m, confidence: 0.95";

class Delegate final : public ForegroundGeofenceDelegate {
 public:
  std::function<void()> heard;
  void didEnterCampaign(std::int64_t, std::int64_t) override { heard(); }
};

class ForegroundMonitor : public testing::Test {
 protected:
  ForegroundMonitor() {
    monitor_->updatePolygons({{square(shop), campaign(1, 10)}, {square(park), campaign(2, 20)}});
    monitor_->start(nullptr);
    (void)host_.seen();
  }

  Lines go(Coordinate to) {
    host_.phone.moveTo(to);
    return host_.seen();
  }

  FloorHost host_;
  std::unique_ptr<ForegroundGeofenceMonitor> monitor_ = std::make_unique<ForegroundGeofenceMonitor>(
      host_.platform.main, host_.platform.locations, host_.services(), host_.reliability);
};

TEST_F(ForegroundMonitor, RecordsACrossingAsAPendingEvent) {
  host_.phone.moveTo(shop, 30.0);
  (void)host_.seen();
  // What becomes of an event is drawn at random, but it is kept before it is attempted.
  struct Writes final : phone::PhoneObserver {
    Lines texts;
    void storeWritten(std::string_view key, const json::Value& value) override {
      if (key == "Orlan_PendingEvents" && value.bytes() != nullptr) texts.push_back(value.bytes()->data);
    }
  } observer;
  host_.phone.observe(observer);
  host_.phone.moveTo(street, 30.0);
  (void)host_.seen();
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

TEST_F(ForegroundMonitor, WhileStoppedNothingHappensAndNoSecondEntryFollows) {
  go(shop);
  monitor_->stop();
  go(street);
  go(shop);
  monitor_->start(nullptr);
  (void)host_.seen();
  EXPECT_THAT(go({51.5005, -0.12}), ElementsAre(found));
}

TEST_F(ForegroundMonitor, AFixThatComesTooLateAndAnEmptyBatchAreNothing) {
  NotingLocations late;
  ForegroundGeofenceMonitor monitor(host_.platform.main, late, host_.services(), host_.reliability);
  monitor.start(nullptr);
  EXPECT_THAT(late.manager->settings, ElementsAre("accuracy 10.0", "filter 10.0", "only in front"));
  const auto delegate = late.manager->delegate.lock();
  delegate->didUpdateLocations(*late.manager, {});
  monitor.stop();
  (void)host_.seen();
  const Location fix = host_.phone.fixAt(shop);
  delegate->didUpdateLocations(*late.manager, {&fix, 1});
  EXPECT_THAT(host_.seen(), IsEmpty());
}

TEST_F(ForegroundMonitor, ACampaignThatIsGoneIsLeftSilently) {
  go(shop);
  monitor_->updatePolygons({{square(park), campaign(2, 20)}});
  (void)host_.seen();
  EXPECT_THAT(go(street), ElementsAre(found));
  monitor_->updatePolygons({});
  EXPECT_THAT(go(park), Contains("• 🎯 Enhanced detection - accuracy: 5.0m, confidence: 0.0"));
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

TEST_F(ForegroundMonitor, WhoReactsMayStopAndReplaceWhatIsTracked) {
  monitor_->updatePolygons({{square(shop), campaign(1, 10, {notification(5, "ON_ENTER", "Hello")})},
                            {square(shop), campaign(2, 20)}});
  auto delegate = std::make_shared<Delegate>();
  delegate->heard = [&] {
    monitor_->stop();
    monitor_->updatePolygons({});
    monitor_->setDelegate({});
    monitor_->clearCooldown();
  };
  monitor_->setDelegate(delegate);
  EXPECT_EQ(monitor_->delegate(), delegate);
  (void)host_.seen();
  const auto seen = go(shop);
  EXPECT_THAT(seen, Contains("scheduled Hello")) << "the reaction goes on with its campaign";
  EXPECT_THAT(seen, Not(Contains(HasSubstr("camp 2")))) << "which is tracked no more";
  EXPECT_THAT(seen, Contains(found));
  monitor_->setDelegate(delegate);
  delegate.reset();
  EXPECT_EQ(monitor_->delegate(), nullptr) << "held weakly";
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

}  // namespace
}  // namespace orlan::test
