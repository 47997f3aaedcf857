#include <gmock/gmock.h>

#include <limits>

#include "geofence/Campaigns.hpp"
#include "orlan/geofence/BackgroundRegionMonitor.hpp"
#include "support/FloorHost.hpp"
#include "support/NotingLocations.hpp"

namespace orlan::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr Coordinate home{51.5, -0.12};
constexpr char starting[] = "• 🔄 Starting location updates to force exit detection (iOS batching workaround)";
constexpr char stopping[] = "• 🛑 Stopping location updates (exit detection complete)";

class Delegate final : public BackgroundGeofenceDelegate {
 public:
  std::function<void()> heard;
  void didEnterRegion(std::int64_t, std::int64_t) override { heard(); }
};

/// `count` squares, farther and farther north of home, campaigns from 1 on, each at ten times its id.
std::vector<CampaignPolygon> squares(int count) {
  std::vector<CampaignPolygon> made;
  for (int id = 1; id <= count; ++id) {
    made.push_back({square({home.latitude + 0.01 * id, home.longitude}), campaign(id, 10 * id)});
  }
  return made;
}

class BackgroundMonitor : public testing::Test {
 protected:
  explicit BackgroundMonitor(std::optional<Location> position = Location{home, 5.0, {}})
      : host_(sim::PhoneSettings{
            .application = ApplicationState::background,
            .location = {.regionEvents = phone::RegionEvents::manual, .position = position}}) {}

  Lines update(const std::vector<CampaignPolygon>& polygons) {
    monitor_->updateRegions(polygons);
    return host_.seen();
  }
  Lines enter(const char* region) {
    host_.phone.locations().enterRegion(region);
    return host_.seen();
  }
  Lines exit(const char* region) {
    host_.phone.locations().exitRegion(region);
    return host_.seen();
  }
  Lines watched() {
    Lines identifiers;
    for (const auto& region : host_.phone.locations().monitoredRegions()) {
      identifiers.push_back(region.identifier);
    }
    return identifiers;
  }

  FloorHost host_;
  std::unique_ptr<BackgroundRegionMonitor> monitor_ = std::make_unique<BackgroundRegionMonitor>(
      host_.platform.main, host_.platform.locations, host_.services());
};

class BackgroundMonitorSomewhere : public BackgroundMonitor {
 protected:
  BackgroundMonitorSomewhere() : BackgroundMonitor(std::nullopt) {}
};

TEST_F(BackgroundMonitor, SetsUpOnceForTheSameCampaigns) {
  EXPECT_THAT(update({}), ElementsAre("• 🧲 BG-Monitor: campaigns unchanged (0), skipping reset"));
  const auto host = host_.platform.locations.makeManager("host");
  host->startMonitoring({"theirs", {home, 100.0}});
  std::vector<std::size_t> circles;
  const auto drawn = monitor_->circlesPublisherPublic().subscribe(
      [&](const std::vector<Circle>& now) { circles.push_back(now.size()); });
  update(squares(2));
  EXPECT_THAT(watched(), ElementsAre("camp_1_10", "camp_2_20"))
      << "every region of the application is replaced";
  auto elsewhere = squares(2);
  std::swap(elsewhere[0].polygon, elsewhere[1].polygon);
  EXPECT_THAT(update(elsewhere), ElementsAre("• 🧲 BG-Monitor: campaigns unchanged (2), skipping reset"));
  update(squares(1));
  EXPECT_THAT(circles, ElementsAre(0, 0, 1, 2, 0, 1));
}

TEST_F(BackgroundMonitorSomewhere, OfMoreThanTwentyTheFirstAreWatched) {
  auto polygons = squares(25);
  std::reverse(polygons.begin(), polygons.end());
  const auto seen = update(polygons);
  EXPECT_THAT(
      seen,
      Contains("• 🧲 BG-Monitor: no location available, using default campaign order for 20-slot limit"));
  EXPECT_THAT(seen, Contains("region start camp_6_60"));
  EXPECT_THAT(seen, Not(Contains("region start camp_5_50")));
  EXPECT_THAT(
      seen,
      Contains("• ⚠️  25 campaigns available, monitoring 20 only (default order, iOS platform limit)"));
  EXPECT_THAT(enter("camp_25_250"), Not(Contains(HasSubstr("report")))) << "nobody knows where";
}

TEST_F(BackgroundMonitor, APolygonWithoutVerticesUsesUpAPlaceAndOthersHaveBounds) {
  auto polygons = squares(20);
  polygons[0].polygon = square(home, 0.0001);
  polygons[1].polygon = square(home, 0.5);
  polygons[3].polygon = Polygon();
  const auto seen = update(polygons);
  EXPECT_THAT(seen, Not(Contains(HasSubstr("selecting nearest"))));
  EXPECT_THAT(seen, Not(Contains(HasSubstr("available"))));
  EXPECT_EQ(seen.back(), "• 🧲 BG-Monitor tracking 19 circular regions");
  const auto regions = host_.phone.locations().monitoredRegions();
  EXPECT_EQ(regions.at(0).circle.radius, 100.0);
  EXPECT_EQ(regions.at(1).circle.radius, 1000.0);
}

TEST_F(BackgroundMonitor, HearsOfRegionsAlsoWhileNobodyLooks) {
  NotingLocations locations;
  BackgroundRegionMonitor monitor(host_.platform.main, locations, host_.services());
  EXPECT_EQ(locations.manager->delegate.lock(), nullptr) << "not before there are regions";
  monitor.updateRegions(squares(1));
  EXPECT_NE(locations.manager->delegate.lock(), nullptr);
  EXPECT_THAT(locations.manager->settings, ElementsAre("in the background too"));
}

TEST_F(BackgroundMonitor, UpdatesEndByThemselvesAndAreNotProlonged) {
  update(squares(2));
  enter("camp_1_10");
  (void)host_.seenAfter(300s);
  EXPECT_EQ(enter("camp_2_20").back(), "• 🔄 Location updates already running, skipping restart");
  EXPECT_THAT(host_.seenAfter(300s - 1us), IsEmpty());
  EXPECT_THAT(host_.seenAfter(1us), ElementsAre(stopping, "updates background off"));
  EXPECT_THAT(exit("camp_1_10"), Not(Contains(stopping)));
  EXPECT_THAT(enter("camp_1_10"), Contains(starting));
  EXPECT_THAT(exit("camp_1_10"), Not(Contains(stopping))) << "still inside another";
  EXPECT_THAT(exit("camp_2_20"), Contains(stopping));
  enter("camp_1_10");
  EXPECT_THAT(host_.seenAfter(600s), Contains(stopping)) << "with a timer of their own";
}

TEST_F(BackgroundMonitor, WhoIsInsideStaysInsideWhenTheCampaignStays) {
  update(squares(2));
  enter("camp_2_20");
  enter("camp_1_10");
  auto polygons = squares(3);
  polygons.erase(polygons.begin());
  EXPECT_THAT(
      update(polygons),
      ElementsAre("• 🧲 BG-Monitor: campaigns changed (was 2, now 2)",
                  "• 🔄 Preserving state: user inside campaigns [1, 2]", "region stop camp_1_10",
                  "region stop camp_2_20", "• 🔄 Keeping location updates active (user inside 2 regions)",
                  "• 🧲 BG-Monitor setting up 2 campaigns (iOS limit: 20 circular regions max)",
                  "region start camp_2_20", "• 🔄 Restored inside state for camp 2", "region start camp_3_30",
                  "• 🧲 BG-Monitor tracking 2 circular regions"));
  EXPECT_THAT(enter("camp_2_20"), Contains(HasSubstr("SKIPPING (preserved from reset)")));
  EXPECT_THAT(exit("camp_1_10"), ElementsAre("region exit camp_1_10"));
  EXPECT_THAT(exit("camp_2_20"), Contains(stopping)) << "inside nothing that is watched";
}

TEST_F(BackgroundMonitor, BeingInsideIsRestoredForEveryLocationOfACampaign) {
  constexpr auto most = std::numeric_limits<std::int64_t>::max();
  update({{square(home), campaign(most, 7)}});
  enter("camp_9223372036854775807_7");
  (void)host_.seenAfter(600s);
  const auto seen = update(
      {{square(home), campaign(most, 7)}, {square(home), campaign(most, 8)}, {square(home), campaign(1, 1)}});
  EXPECT_THAT(seen, Contains("• 🔄 Restarting location updates (user inside 2 regions)"));
  EXPECT_THAT(seen, Contains(starting)) << "they had ended by themselves";
  EXPECT_THAT(exit("camp_9223372036854775807_8"), Contains(HasSubstr("BG didExitRegion camp 92233720")));
  EXPECT_THAT(exit("camp_1_1"), Contains(HasSubstr("false exit from reset")));
}

TEST_F(BackgroundMonitor, WhoIsInsideACampaignThatGoesIsNotFollowed) {
  update(squares(1));
  enter("camp_1_10");
  EXPECT_THAT(update({{square(home), campaign(2, 20)}}),
              Contains("• 🔄 Keeping location updates active (user inside 1 regions)"));
  EXPECT_THAT(exit("camp_2_20"), Contains(HasSubstr("false exit from reset")));
  EXPECT_THAT(enter("camp_2_20"), Contains(starting)) << "they were stopped";
}

TEST_F(BackgroundMonitor, WhoReactsMayReplaceWhatIsWatched) {
  update({{square(home), campaign(1, 10, {notification(5, "ON_ENTER", "Hello")})}});
  auto delegate = std::make_shared<Delegate>();
  delegate->heard = [&] {
    monitor_->updateRegions(squares(3));
    monitor_->pauseMonitoring();
    monitor_->clearCooldown();
    monitor_->setDelegate({});
  };
  monitor_->setDelegate(delegate);
  EXPECT_EQ(monitor_->delegate(), delegate);
  EXPECT_THAT(enter("camp_1_10"), Contains("scheduled Hello")) << "the reaction goes on with its campaign";
  EXPECT_THAT(watched(), ElementsAre("camp_1_10", "camp_2_20", "camp_3_30"));
  monitor_->setDelegate(delegate);
  delegate.reset();
  EXPECT_EQ(monitor_->delegate(), nullptr) << "held weakly";
}

TEST_F(BackgroundMonitor, WhoSeesTheCirclesChangeMayBeginAnew) {
  const std::vector<CampaignPolygon> other{{square(home), campaign(9, 90)}};
  for (const std::size_t moment : {0, 1}) {  // once all are gone, once the first is there
    update(other);
    enter("camp_9_90");
    auto polygons = squares(3);
    polygons.push_back(other.front());
    std::vector<Circle> drawn;
    const auto drawing = monitor_->circlesPublisher().subscribe([&](const std::vector<Circle>& circles) {
      drawn = circles;
      if (circles.size() == moment) monitor_->updateRegions(other);
    });
    EXPECT_EQ(update(polygons).back(), "• 🧲 BG-Monitor tracking 1 circular regions");
    EXPECT_THAT(watched(), ElementsAre("camp_9_90")) << "the first set-up ended with the second";
    EXPECT_THAT(drawn, SizeIs(1));
    EXPECT_THAT(exit("camp_9_90"), Contains(stopping)) << "who was inside still was";
    update({});
  }
}

}  // namespace
}  // namespace orlan::test
