#include <gmock/gmock.h>

#include "geofence/Answers.hpp"
#include "orlan/geofence/GeofenceService.hpp"
#include "support/FloorHost.hpp"

namespace orlan::test {
namespace {

using sim::HttpAnswer;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

constexpr Coordinate home{51.5, -0.12};
constexpr char path[] = "/api/check-geofence";
constexpr char cacheFile[] = "orlan-geofences.json";
constexpr char asked[] = "POST /api/check-geofence";

const std::string twoAndOne = answer({geoCampaign(1, 10, 4), geoCampaign(2, 20, 4)}, {pushCampaign(3)});

class Sink final : public PolygonSink {
 public:
  Sink(Transcript& transcript, std::string name) : transcript_(transcript), name_(std::move(name)) {}
  void takePolygons(const std::vector<CampaignPolygon>& polygons) override {
    transcript_.note(name_ + " takes " + std::to_string(polygons.size()));
  }

 private:
  Transcript& transcript_;
  std::string name_;
};

class GeofenceServiceTest : public testing::Test {
 protected:
  GeofenceServiceTest() { answerWith(HttpAnswer::reply(200, twoAndOne)); }

  void answerWith(HttpAnswer reply) {
    host_.phone.http().forget("POST", path);
    host_.phone.http().answer("POST", path, {std::move(reply)});
  }
  void start(const std::string& key = "key") { service_->start(key, Config::Environment::staging, manager_); }

  /// Started and fetched, nothing unseen.
  void startAndFetch() {
    start();
    (void)host_.seenAfter(1s);
  }

  FloorHost host_{{.location = {.position = Location{home, 5.0, {}}}}};
  CurrentValue<std::optional<Location>> locations_;
  Sink foreground_{host_.transcript, "foreground"};
  Sink background_{host_.transcript, "background"};
  std::shared_ptr<LocationManager> manager_ = host_.platform.locations.makeManager("host");
  std::unique_ptr<GeofenceService> service_ = std::make_unique<GeofenceService>(
      host_.platform,
      GeofenceService::Neighbours{host_.logger, host_.api, locations_, foreground_, background_});
};

TEST_F(GeofenceServiceTest, AnAnswerIsPublishedInOrderAndTheFetchEndsWithItsLastConsequence) {
  std::vector<Subscription> heard;
  heard.push_back(service_->currentPublisher().subscribe(
      [&](const auto& data) { host_.transcript.note(data ? "publish current" : "publish nothing"); }));
  heard.push_back(service_->campaigns().subscribe([&](const CampaignData&) {
    host_.transcript.note("publish campaigns");
    service_->refetch();  // too early
  }));
  heard.push_back(service_->polygonsPublisherPublic().subscribe([&](const auto& polygons) {
    host_.transcript.note("publish polygons " + std::to_string(polygons.size()));
  }));
  start();
  EXPECT_THAT(host_.seen(),
              ElementsAre("publish nothing", "publish polygons 0",
                          "INFO 🌐 /check-geofence (start) [legacy auth] → 51.5,-0.12 | segments: ", asked));
  EXPECT_THAT(
      host_.seenAfter(50ms),
      ElementsAre("file orlan-geofences.json", "INFO ✅ Geofence fetch OK – 3 campaigns", "publish current",
                  "publish campaigns", "INFO 🔄 Manually triggering geofence refetch",
                  "INFO ⏭️ Geofence fetch (manual) skipped: fetch already in flight",
                  "INFO 🔔 Processing 1 PUSH campaign(s)",
                  "report notification_delivered as notification of 6 at 0 (-1.0,-1.0)", "scheduled Push",
                  "INFO ✅ PUSH dispatch queued – scheduled 1, skipped 0", "foreground takes 2",
                  "background takes 2", "publish polygons 2",
                  "store Orlan.PushDeliveredAt.v1.3.6.2026-01-01.2026-02-01 = 1767225600.05",
                  "• ✅ PUSH scheduled campaign=3 notif=6 location=0"));
  EXPECT_THAT(service_->currentPolygons(), SizeIs(2));
  service_->refetch();
  EXPECT_THAT(host_.seen(), Contains(asked)) << "the fetch is over";
}

TEST_F(GeofenceServiceTest, WithoutAFixNothingIsFetched) {
  manager_ = nullptr;
  start();
  locations_.send(host_.phone.fixAt(home));
  EXPECT_THAT(host_.seen(), ElementsAre("ERROR Geofence fetch (start): no CLLocation yet"))
      << "active: the fix is only remembered";
  service_->refetch();
  EXPECT_THAT(host_.seen(), Contains(asked));
}

TEST_F(GeofenceServiceTest, FailuresKeepWhatWasThere) {
  const HttpAnswer rows[] = {HttpAnswer::notHttp(), HttpAnswer::reply(199, twoAndOne),
                             HttpAnswer::reply(300, twoAndOne), HttpAnswer::reply(200)};
  startAndFetch();
  const auto before = service_->current();
  for (const auto& reply : rows) {
    answerWith(reply);
    service_->refetch();
    (void)host_.seen();
    EXPECT_THAT(host_.seenAfter(50ms), ElementsAre(StartsWith("ERROR ❌ Geofence fetch (manual) failed: ")));
  }
  EXPECT_EQ(service_->current(), before);
  EXPECT_EQ(host_.phone.files().content(cacheFile), twoAndOne);
}

TEST_F(GeofenceServiceTest, TheTimerFollowsTheApplicationsStateAtEachRestart) {
  startAndFetch();
  EXPECT_THAT(host_.seenAfter(298s), IsEmpty());
  EXPECT_THAT(host_.seenAfter(1s), Contains(StartsWith("INFO 🌐 /check-geofence (timer)")));
  host_.phone.application().moveTo(ApplicationState::background);
  EXPECT_THAT(host_.seenAfter(1799s), Not(Contains(asked)));
  EXPECT_THAT(host_.seenAfter(1s), Contains(asked));
  host_.phone.application().moveTo(ApplicationState::active);
  EXPECT_THAT(host_.seenAfter(1799s), Not(Contains(asked))) << "set while still in the background";
  EXPECT_THAT(host_.seenAfter(1s), Contains(asked));
}

TEST_F(GeofenceServiceTest, ATickDuringAFetchIsSkippedForGood) {
  answerWith(HttpAnswer::reply(200, twoAndOne).after(55s));
  start();
  (void)host_.seenAfter(299s);
  service_->refetch();
  (void)host_.seen();
  EXPECT_THAT(host_.seenAfter(1s),
              ElementsAre("INFO ⏭️ Geofence fetch (timer) skipped: fetch already in flight"));
  EXPECT_THAT(host_.seenAfter(298s), Not(Contains(asked)));
}

TEST_F(GeofenceServiceTest, ASecondStartReplacesKeyTimerAndFixesButNotTheObservers) {
  struct Keys final : phone::PhoneObserver {
    Lines seen;
    void request(phone::RequestId, const HttpRequest& request) override {
      if (request.url.ends_with(path)) seen.push_back(request.headers.back().second);
    }
  } keys;
  host_.phone.observe(keys);
  startAndFetch();
  start("second");
  (void)host_.seenAfter(299s);
  EXPECT_THAT(host_.seenAfter(2s), Contains(asked));
  EXPECT_THAT(keys.seen, ElementsAre("key", "second", "second")) << "start, start, timer";
  EXPECT_THAT(host_.seenAfter(298s), Not(Contains(asked))) << "one timer";
  host_.phone.application().moveTo(ApplicationState::background);
  (void)host_.seenAfter(200s);
  locations_.send(host_.phone.fixAt({51.6, -0.12}));
  const auto seen = host_.seen();
  EXPECT_EQ(std::count(seen.begin(), seen.end(), asked), 1) << "one subscription";
  start("");
  (void)host_.seenAfter(1s);
  EXPECT_THAT(host_.seenAfter(1h), IsEmpty()) << "without a key no timer";
}

TEST_F(GeofenceServiceTest, TheFirstFixInTheBackgroundHasNothingToMeasureFrom) {
  manager_ = nullptr;
  host_.phone.application().moveTo(ApplicationState::background);
  start();
  (void)host_.seen();
  locations_.send(std::nullopt);
  locations_.send(host_.phone.fixAt(home));
  EXPECT_THAT(host_.seen(),
              Contains("INFO 📍 Significant background location update (∞m) → refreshing geofences"));
}

TEST_F(GeofenceServiceTest, TheFixOfTheMomentComesAfterTheStartsOwnFetch) {
  host_.phone.application().moveTo(ApplicationState::background);
  locations_.send(host_.phone.fixAt({51.6, -0.12}));
  start();
  const auto seen = host_.seen();
  EXPECT_THAT(seen, Contains("INFO 🌐 /check-geofence (start) [legacy auth] → 51.5,-0.12 | segments: "));
  EXPECT_EQ(std::count(seen.begin(), seen.end(), asked), 1);
}

TEST_F(GeofenceServiceTest, NothingOfItOutlivesIt) {
  start();
  host_.phone.application().moveTo(ApplicationState::background);
  locations_.send(host_.phone.fixAt({51.6, -0.12}));
  service_.reset();
  (void)host_.transcript.take();
  EXPECT_THAT(host_.seenAfter(1h), IsEmpty());
  EXPECT_EQ(host_.phone.files().content(cacheFile), std::nullopt);
  host_.phone.application().moveTo(ApplicationState::active);
}

TEST_F(GeofenceServiceTest, AnAnswerThatComesWithItsEndIsForgotten) {
  struct Ending final : phone::PhoneObserver {
    std::function<void()> end;
    void fileWritten(std::string_view name, std::size_t) override {
      if (name == cacheFile) end();
    }
  } ending;
  ending.end = [this] { host_.platform.main.async([this] { service_.reset(); }); };
  host_.phone.observe(ending);
  start();
  EXPECT_EQ(host_.seenAfter(1h).back(), "file orlan-geofences.json") << "kept for the next service";
}

}  // namespace
}  // namespace orlan::test
