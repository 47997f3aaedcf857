#include <gmock/gmock.h>

#include <limits>

#include "geofence/Campaigns.hpp"
#include "geofence/GeofenceHost.hpp"
#include "orlan/geofence/BackgroundRegionMonitor.hpp"

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
  std::function<void(bool entered)> heard = [](bool) {};
  void didEnterRegion(std::int64_t, std::int64_t) override { heard(true); }
  void didExitRegion(std::int64_t, std::int64_t) override { heard(false); }
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

  std::vector<std::string> update(const std::vector<CampaignPolygon>& polygons) {
    monitor_->updateRegions(polygons);
    return host_.seen();
  }
  std::vector<std::string> enter(const char* region) {
    host_.phone.locations().enterRegion(region);
    return host_.seen();
  }
  std::vector<std::string> exit(const char* region) {
    host_.phone.locations().exitRegion(region);
    return host_.seen();
  }
  std::vector<std::string> after(Duration time) {
    host_.world.runFor(time);
    return host_.seen();
  }
  std::vector<std::string> watched() {
    std::vector<std::string> identifiers;
    for (const auto& region : host_.phone.locations().monitoredRegions())
      identifiers.push_back(region.identifier);
    return identifiers;
  }

  std::vector<Circle> circles() {
    std::vector<Circle> now;
    (void)monitor_->circlesPublisher().subscribe([&](const auto& list) { now = list; });
    return now;
  }

  GeofenceHost host_;
  std::unique_ptr<BackgroundRegionMonitor> monitor_ = std::make_unique<BackgroundRegionMonitor>(
      host_.platform.main, host_.platform.locations, host_.services());
};

class BackgroundMonitorSomewhere : public BackgroundMonitor {
 protected:
  BackgroundMonitorSomewhere() : BackgroundMonitor(std::nullopt) {}
};

TEST_F(BackgroundMonitor, SaysOnlyWhenItChangesHands) {
  monitor_->resumeMonitoring();
  monitor_->pauseMonitoring();
  monitor_->pauseMonitoring();
  monitor_->resumeMonitoring();
  monitor_->resumeMonitoring();
  EXPECT_THAT(host_.seen(), ElementsAre("• ⏸️  BG-Monitor paused (foreground mode)",
                                        "• ▶️  BG-Monitor resumed (background mode)"));
}

TEST_F(BackgroundMonitor, SetsUpOnceForTheSameCampaigns) {
  EXPECT_THAT(update({}), ElementsAre("• 🧲 BG-Monitor: campaigns unchanged (0), skipping reset"));
  std::vector<std::size_t> circles;
  const auto drawn = monitor_->circlesPublisherPublic().subscribe(
      [&](const std::vector<Circle>& now) { circles.push_back(now.size()); });
  EXPECT_THAT(update(squares(2)),
              ElementsAre("• 🧲 BG-Monitor setting up 2 campaigns (iOS limit: 20 circular regions max)",
                          "region start camp_1_10", "region start camp_2_20",
                          "• 🧲 BG-Monitor tracking 2 circular regions"));
  auto elsewhere = squares(2);
  std::swap(elsewhere[0].polygon, elsewhere[1].polygon);
  EXPECT_THAT(update(elsewhere), ElementsAre("• 🧲 BG-Monitor: campaigns unchanged (2), skipping reset"));
  EXPECT_THAT(circles, ElementsAre(0, 0, 1, 2));
  EXPECT_THAT(update(squares(1)),
              ElementsAre("• 🧲 BG-Monitor: campaigns changed (was 2, now 1)", "region stop camp_1_10",
                          "region stop camp_2_20",
                          "• 🧲 BG-Monitor setting up 1 campaigns (iOS limit: 20 circular regions max)",
                          "region start camp_1_10", "• 🧲 BG-Monitor tracking 1 circular regions"));
  EXPECT_THAT(circles, ElementsAre(0, 0, 1, 2, 0, 1));
}

TEST_F(BackgroundMonitor, RegionsAreTheClampedCirclesOfThePolygons) {
  update({{square(home, 0.0001), campaign(1, 10)}, {square({51.6, -0.12}, 0.5), campaign(2, 20)}});
  const auto regions = host_.phone.locations().monitoredRegions();
  ASSERT_THAT(regions, SizeIs(2));
  EXPECT_NEAR(regions[0].circle.centre.latitude, home.latitude, 1e-9);
  EXPECT_NEAR(regions[0].circle.centre.longitude, home.longitude, 1e-9);
  EXPECT_EQ(regions[0].circle.radius, 100.0);
  EXPECT_EQ(regions[1].circle.radius, 1000.0);
  EXPECT_TRUE(regions[0].notifyOnEntry && regions[0].notifyOnExit);
  EXPECT_THAT(circles(), ElementsAre(regions[0].circle, regions[1].circle));
}

TEST_F(BackgroundMonitor, ReplacesEveryRegionOfTheApplication) {
  const auto host = host_.platform.locations.makeManager("host");
  host->startMonitoring({"theirs", {home, 100.0}});
  update(squares(1));
  EXPECT_THAT(watched(), ElementsAre("camp_1_10"));
}

TEST_F(BackgroundMonitor, OfMoreThanTwentyTheNearestAreWatched) {
  auto polygons = squares(25);
  std::reverse(polygons.begin(), polygons.end());
  const auto seen = update(polygons);
  EXPECT_THAT(seen, Contains("• 🧲 BG-Monitor: selecting nearest campaigns for 20-slot iOS region cap"));
  EXPECT_THAT(seen, Contains("region start camp_20_200"));
  EXPECT_THAT(seen, Not(Contains("region start camp_21_210")));
  ASSERT_GE(seen.size(), 2U);
  EXPECT_EQ(seen[seen.size() - 2],
            "• ⚠️  25 campaigns available, monitoring 20 only (nearest-first, iOS platform limit)");
  EXPECT_EQ(seen.back(), "• 🧲 BG-Monitor tracking 20 circular regions");
  EXPECT_THAT(watched(), SizeIs(20));
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
}

TEST_F(BackgroundMonitor, APolygonWithoutVerticesUsesUpAPlace) {
  auto polygons = squares(20);
  polygons[3].polygon = Polygon();
  const auto seen = update(polygons);
  EXPECT_THAT(seen, Not(Contains(HasSubstr("selecting nearest"))));
  EXPECT_THAT(seen, Not(Contains(HasSubstr("available"))));
  EXPECT_EQ(seen.back(), "• 🧲 BG-Monitor tracking 19 circular regions");
}

TEST_F(BackgroundMonitor, AnEntryAndAnExit) {
  update(squares(1));
  EXPECT_THAT(enter("camp_1_10"),
              ElementsAre("region enter camp_1_10", "• 📥 BG didEnterRegion camp 1 at 00:00:00.000",
                          "• 🔔 sendLocalNotifications - activation: ON_ENTER, campaign: 1",
                          "count BG ON_ENTER", "report geofence_entry as geofence of -1 at 10 (51.5,-0.12)",
                          "report location_update as location of -1 at 10 (51.5,-0.12)", starting,
                          "updates background on 100/50"));
  (void)after(30s);
  EXPECT_THAT(
      exit("camp_1_10"),
      ElementsAre(
          "region exit camp_1_10", "• 📤 BG didExitRegion camp 1 at 00:00:30.000 (dwell time: 30s)",
          "store Orlan_AppStartTime = 788918400.0", "store Orlan_LastNotification_1_ON_EXIT = 788918430.0",
          "• 🔔 BG Allowing ON_EXIT notification for campaign 1 - cooldown passed",
          "• 🔔 sendLocalNotifications - activation: ON_EXIT, campaign: 1", "count BG ON_EXIT",
          "• 📍 No longer inside any regions, stopping location updates", stopping,
          "updates background off 100/50", "report geofence_exit as geofence of -1 at 10 (51.5,-0.12)",
          "report location_update as location of -1 at 10 (51.5,-0.12)"));
  EXPECT_THAT(
      exit("camp_1_10"),
      ElementsAre("region exit camp_1_10", "• 📤 BG didExitRegion camp 1 - SKIPPING (false exit from reset)"));
  EXPECT_THAT(after(1h), IsEmpty()) << "the timer went with the updates";
}

TEST_F(BackgroundMonitorSomewhere, WithoutAPositionNothingIsReported) {
  update(squares(1));
  EXPECT_THAT(enter("camp_1_10"),
              ElementsAre("region enter camp_1_10", "• 📥 BG didEnterRegion camp 1 at 00:00:00.000",
                          "• 🔔 sendLocalNotifications - activation: ON_ENTER, campaign: 1",
                          "count BG ON_ENTER", starting, "updates background on 100/50"));
}

TEST_F(BackgroundMonitor, IgnoresWhatItDoesNotWatchOrSawAlready) {
  EXPECT_THAT(enter("camp_1_10"), ElementsAre("region enter camp_1_10")) << "nobody listens yet";
  update(squares(1));
  EXPECT_THAT(enter("theirs"), ElementsAre("region enter theirs"));
  EXPECT_THAT(exit("theirs"), ElementsAre("region exit theirs"));
  EXPECT_THAT(
      exit("camp_1_10"),
      ElementsAre("region exit camp_1_10", "• 📤 BG didExitRegion camp 1 - SKIPPING (false exit from reset)"));
  enter("camp_1_10");
  EXPECT_THAT(enter("camp_1_10"),
              ElementsAre("region enter camp_1_10",
                          "• 📥 BG didEnterRegion camp 1 - SKIPPING (preserved from reset)"));
}

TEST_F(BackgroundMonitor, CrossingsWhilePausedAreLost) {
  update(squares(1));
  monitor_->pauseMonitoring();
  (void)host_.seen();
  EXPECT_THAT(enter("camp_1_10"), ElementsAre("region enter camp_1_10",
                                              "• 📥 BG didEnterRegion - SKIPPING (paused for foreground)"));
  EXPECT_THAT(exit("theirs"),
              ElementsAre("region exit theirs", "• 📤 BG didExitRegion - SKIPPING (paused for foreground)"));
  monitor_->resumeMonitoring();
  EXPECT_THAT(exit("camp_1_10"), Contains("• 📤 BG didExitRegion camp 1 - SKIPPING (false exit from reset)"));
}

TEST_F(BackgroundMonitor, UpdatesEndByThemselvesAndAreNotProlonged) {
  update(squares(2));
  enter("camp_1_10");
  (void)after(300s);
  EXPECT_EQ(enter("camp_2_20").back(), "• 🔄 Location updates already running, skipping restart");
  EXPECT_THAT(after(300s - 1us), IsEmpty());
  EXPECT_THAT(after(1us), ElementsAre(stopping, "updates background off 100/50"));
  EXPECT_THAT(exit("camp_1_10"), Not(Contains(stopping)));
  EXPECT_THAT(enter("camp_1_10"), Contains(starting));
  EXPECT_THAT(after(600s), Contains(stopping)) << "with a timer of their own";
}

TEST_F(BackgroundMonitor, UpdatesRunUntilTheLastRegionIsLeft) {
  update(squares(2));
  enter("camp_1_10");
  enter("camp_2_20");
  EXPECT_THAT(exit("camp_1_10"), Not(Contains(stopping)));
  EXPECT_THAT(exit("camp_2_20"), Contains(stopping));
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
  EXPECT_THAT(exit("camp_2_20"), Contains(HasSubstr("BG didExitRegion camp 2 at")));
}

TEST_F(BackgroundMonitor, BeingInsideIsRestoredForEveryLocationOfACampaign) {
  update({{square(home), campaign(12, 7)}});
  enter("camp_12_7");
  (void)after(600s);
  const auto seen = update(
      {{square(home), campaign(12, 7)}, {square(home), campaign(12, 8)}, {square(home), campaign(1, 1)}});
  EXPECT_THAT(seen, Contains("• 🔄 Restarting location updates (user inside 2 regions)"));
  EXPECT_THAT(seen, Contains(starting)) << "they had ended by themselves";
  EXPECT_THAT(exit("camp_12_8"), Contains(HasSubstr("BG didExitRegion camp 12 at")));
  EXPECT_THAT(exit("camp_1_1"), Contains(HasSubstr("false exit from reset")));
}

TEST_F(BackgroundMonitor, BeingInsideSurvivesForIdsAtBothEnds) {
  constexpr auto least = std::numeric_limits<std::int64_t>::min();
  constexpr auto most = std::numeric_limits<std::int64_t>::max();
  const CampaignPolygon low{square(home), campaign(least, most)};
  const CampaignPolygon high{square(home), campaign(most, least)};
  update({low, high});
  enter("camp_-9223372036854775808_9223372036854775807");
  enter("camp_9223372036854775807_-9223372036854775808");
  const auto seen = update({low, high, {square(home), campaign(1, 1)}});
  EXPECT_THAT(seen, Contains("• 🔄 Restored inside state for camp -9223372036854775808"));
  EXPECT_THAT(seen, Contains("• 🔄 Restored inside state for camp 9223372036854775807"));
  EXPECT_THAT(exit("camp_9223372036854775807_-9223372036854775808"),
              Contains(HasSubstr("BG didExitRegion camp 9223372036854775807 at")));
}

TEST_F(BackgroundMonitor, WhoIsInsideACampaignThatGoesIsNotFollowed) {
  update(squares(1));
  enter("camp_1_10");
  EXPECT_THAT(update({{square(home), campaign(2, 20)}}),
              ElementsAre("• 🧲 BG-Monitor: campaigns changed (was 1, now 1)",
                          "• 🔄 Preserving state: user inside campaigns [1]", "region stop camp_1_10",
                          "• 🔄 Keeping location updates active (user inside 1 regions)",
                          "• 🧲 BG-Monitor setting up 1 campaigns (iOS limit: 20 circular regions max)",
                          "region start camp_2_20", stopping, "updates background off 100/50",
                          "• 🧲 BG-Monitor tracking 1 circular regions"));
  EXPECT_THAT(exit("camp_2_20"), Contains(HasSubstr("false exit from reset")));
}

TEST_F(BackgroundMonitor, TellsDelegateAndPublishersInOrder) {
  auto delegate = std::make_shared<Delegate>();
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
  update(squares(1));
  const auto in = enter("camp_1_10");
  EXPECT_EQ(in.at(2), "delegate enter");
  EXPECT_EQ(in.at(3), "publish enter");
  const auto out = exit("camp_1_10");
  EXPECT_EQ(out.at(2), "delegate exit");
  EXPECT_EQ(out.at(3), "publish exit");
  delegate.reset();
  EXPECT_THAT(enter("camp_1_10"), Not(Contains("delegate enter"))) << "held weakly";
}

TEST_F(BackgroundMonitor, WhoReactsMayReplaceWhatIsWatched) {
  update({{square(home), campaign(1, 10, {notification(5, "ON_ENTER", "Hello")})}});
  const auto delegate = std::make_shared<Delegate>();
  delegate->heard = [&](bool) {
    monitor_->updateRegions(squares(3));
    monitor_->pauseMonitoring();
    monitor_->clearCooldown();
    monitor_->setDelegate({});
  };
  monitor_->setDelegate(delegate);
  EXPECT_THAT(enter("camp_1_10"), Contains("scheduled Hello")) << "the reaction goes on with its campaign";
  EXPECT_THAT(watched(), ElementsAre("camp_1_10", "camp_2_20", "camp_3_30"));
}

TEST_F(BackgroundMonitor, WhoSeesTheCirclesChangeMayBeginAnew) {
  const std::vector<CampaignPolygon> other{{square(home), campaign(9, 90)}};
  for (const std::size_t moment : {0, 1}) {  // once all are gone, once the first is there
    const auto drawn = monitor_->circlesPublisher().subscribe([&](const std::vector<Circle>& circles) {
      if (circles.size() == moment) monitor_->updateRegions(other);
    });
    EXPECT_EQ(update(squares(3)).back(), "• 🧲 BG-Monitor tracking 1 circular regions");
    EXPECT_THAT(watched(), ElementsAre("camp_9_90")) << "the first set-up ended with the second";
    EXPECT_THAT(circles(), SizeIs(1));
  }
}

TEST_F(BackgroundMonitor, PostsAndChecksOnDemand) {
  monitor_->sendLocalNotifications(campaign(1, 10, {notification(5, "on_exit", "Bye")}), "ON_EXIT");
  EXPECT_TRUE(monitor_->shouldSendNotification(1, "ON_EXIT"));
  EXPECT_FALSE(monitor_->shouldSendNotification(1, "ON_EXIT"));
  monitor_->clearCooldown();
  EXPECT_TRUE(monitor_->shouldSendNotification(1, "ON_EXIT"));
  EXPECT_THAT(host_.seen(), Contains("scheduled Bye"));
}

TEST_F(BackgroundMonitor, NothingOfItOutlivesItButTheRegions) {
  update(squares(1));
  enter("camp_1_10");
  monitor_.reset();
  (void)host_.seen();
  EXPECT_THAT(exit("camp_1_10"), ElementsAre("region exit camp_1_10"));
  EXPECT_THAT(after(1h), IsEmpty());
  EXPECT_THAT(watched(), ElementsAre("camp_1_10"));
}

}  // namespace
}  // namespace orlan::test
