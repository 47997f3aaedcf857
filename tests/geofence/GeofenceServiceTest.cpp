#include <gmock/gmock.h>

#include "geofence/Answers.hpp"
#include "geofence/GeofenceHost.hpp"
#include "orlan/geofence/GeofenceService.hpp"

namespace orlan::test {
namespace {

using sim::HttpAnswer;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::Not;
using testing::NotNull;
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
  explicit GeofenceServiceTest(sim::PhoneSettings settings = atHome()) : host_(std::move(settings)) {
    host_.phone.http().answer("POST", path, {HttpAnswer::reply(200, twoAndOne)});
  }

  static sim::PhoneSettings atHome() {
    sim::PhoneSettings settings;
    settings.location.position = Location{home, 5.0, {}};
    return settings;
  }

  GeofenceService& service() {
    if (!service_) {
      service_ = std::make_unique<GeofenceService>(
          host_.platform,
          GeofenceService::Neighbours{host_.logger, host_.api, locations_, foreground_, background_});
    }
    return *service_;
  }

  void start(const std::string& key = "key") { service().start(key, Config::Environment::staging, manager_); }

  std::vector<std::string> seenAfter(Duration time) {
    host_.world.runFor(time);
    return host_.seen();
  }

  /// Started and fetched, nothing unseen.
  void startAndFetch() {
    start();
    (void)seenAfter(1s);
  }

  GeofenceHost host_;
  CurrentValue<std::optional<Location>> locations_;
  Sink foreground_{host_.transcript, "foreground"};
  Sink background_{host_.transcript, "background"};
  std::shared_ptr<LocationManager> manager_ = host_.platform.locations.makeManager("host");
  std::unique_ptr<GeofenceService> service_;
};

TEST_F(GeofenceServiceTest, AStartFetchesAndPublishesInOrder) {
  std::vector<Subscription> heard;
  heard.push_back(service().currentPublisher().subscribe(
      [&](const auto& data) { host_.transcript.note(data ? "publish current" : "publish nothing"); }));
  heard.push_back(service().campaigns().subscribe([&](const CampaignData& data) {
    host_.transcript.note("publish campaigns " + std::to_string(data.campaignsArray.size()));
    service().refetch();  // too early: the fetch ends with its last consequence
  }));
  heard.push_back(service().polygonsPublisherPublic().subscribe([&](const auto& polygons) {
    host_.transcript.note("publish polygons " + std::to_string(polygons.size()));
  }));
  start();
  EXPECT_THAT(host_.seen(),
              ElementsAre("publish nothing", "publish polygons 0",
                          "INFO 🌐 /check-geofence (start) [legacy auth] → 51.5,-0.12 | segments: ", asked));
  EXPECT_THAT(
      seenAfter(50ms),
      ElementsAre("file orlan-geofences.json", "INFO ✅ Geofence fetch OK – 3 campaigns", "publish current",
                  "publish campaigns 3", "INFO 🔄 Manually triggering geofence refetch",
                  "INFO ⏭️ Geofence fetch (manual) skipped: fetch already in flight",
                  "INFO 🔔 Processing 1 PUSH campaign(s)",
                  "report notification_delivered as notification of 6 at 0 (-1.0,-1.0)", "scheduled Push",
                  "INFO ✅ PUSH dispatch queued – scheduled 1, skipped 0", "foreground takes 2",
                  "background takes 2", "publish polygons 2",
                  "store Orlan.PushDeliveredAt.v1.3.6.2026-01-01.2026-02-01 = 1767225600.05",
                  "• ✅ PUSH scheduled campaign=3 notif=6 location=0"));
  EXPECT_EQ(host_.phone.files().content(cacheFile), twoAndOne);
  EXPECT_THAT(service().current()->campaignsArray, SizeIs(3));
  EXPECT_THAT(service().currentPolygons(), SizeIs(2));
  service().refetch();
  EXPECT_THAT(host_.seen(), Contains(asked)) << "the fetch is over";
}

TEST_F(GeofenceServiceTest, TheKeyOfStartIsTheFallbackKey) {
  struct Keys final : phone::PhoneObserver {
    std::vector<std::string> seen;
    void request(phone::RequestId, const HttpRequest& request) override {
      if (request.url.ends_with(path)) seen.push_back(request.headers.back().second);
    }
  } keys;
  host_.phone.observe(keys);
  start("first");
  (void)seenAfter(1s);
  start("second");
  (void)seenAfter(301s);
  EXPECT_THAT(keys.seen, ElementsAre("first", "second", "second")) << "start, start, timer";
}

TEST_F(GeofenceServiceTest, WithoutAFixNothingIsFetched) {
  manager_ = nullptr;
  start();
  EXPECT_THAT(host_.seen(), ElementsAre("ERROR Geofence fetch (start): no CLLocation yet"));
  locations_.send(host_.phone.fixAt(home));
  EXPECT_THAT(host_.seen(), IsEmpty()) << "active: the fix is only remembered";
  service().refetch();
  EXPECT_THAT(host_.seen(), Contains(asked));
}

TEST_F(GeofenceServiceTest, RefetchBeforeStartIsAnError) {
  service().refetch();
  EXPECT_THAT(seenAfter(1h), ElementsAre("ERROR refetchGeofence: SDK not initialized"));
}

TEST_F(GeofenceServiceTest, FailuresKeepWhatWasThere) {
  const std::string damaged = R"({"geoCampaign":[]})";
  const std::pair<HttpAnswer, const char*> rows[] = {
      {HttpAnswer::unreachable(), nullptr},
      {HttpAnswer::notHttp(), nullptr},
      {HttpAnswer::reply(304), nullptr},
      {HttpAnswer::reply(199, twoAndOne), nullptr},
      {HttpAnswer::reply(300, twoAndOne), nullptr},
      {HttpAnswer::reply(200, damaged), "pushCampaign: missing"},
      {HttpAnswer::reply(200, ""), nullptr},
      {HttpAnswer::reply(200), nullptr},
  };
  startAndFetch();
  const auto before = service().current();
  for (const auto& [reply, description] : rows) {
    host_.phone.http().forget("POST", path);
    host_.phone.http().answer("POST", path, {reply});
    service().refetch();
    (void)host_.seen();
    const std::string opening = "ERROR ❌ Geofence fetch (manual) failed: ";
    const auto seen = seenAfter(50ms);
    EXPECT_THAT(seen, ElementsAre(StartsWith(opening + (description ? description : "")))) << opening;
    EXPECT_GT(seen.front().size(), opening.size()) << "a reason";
  }
  EXPECT_EQ(service().current(), before);
  EXPECT_THAT(service().currentPolygons(), SizeIs(2));
  EXPECT_EQ(host_.phone.files().content(cacheFile), twoAndOne);
}

TEST_F(GeofenceServiceTest, AStatusOutsideSuccessNamesTheBadAnswer) {
  host_.phone.http().forget("POST", path);
  host_.phone.http().answer("POST", path, {HttpAnswer::reply(500, twoAndOne)});
  start();
  EXPECT_EQ(seenAfter(1s).back(),
            "ERROR ❌ Geofence fetch (start) failed: " + urlErrors::badServerResponse().description);
}

TEST_F(GeofenceServiceTest, ACacheThatCannotBeWrittenIsDoneWithout) {
  host_.phone.files().fail(sim::StorageFault::writes);
  start();
  EXPECT_THAT(seenAfter(1s), Contains("foreground takes 2"));
  EXPECT_EQ(host_.phone.files().content(cacheFile), std::nullopt);
}

TEST_F(GeofenceServiceTest, TheCacheIsLoadedButHandedToNobody) {
  host_.phone.files().change(cacheFile, twoAndOne);
  int emitted = 0;
  const auto heard = service().campaigns().subscribe([&](const CampaignData&) { ++emitted; });
  EXPECT_THAT(service().current()->campaignsArray, SizeIs(3));
  EXPECT_THAT(service().currentPolygons(), SizeIs(2));
  EXPECT_EQ(emitted, 0);
  EXPECT_THAT(host_.seen(), IsEmpty());
  EXPECT_EQ(host_.api.ifBuilt(), nullptr);
}

TEST_F(GeofenceServiceTest, ACacheOfNoUseIsNoCache) {
  for (const auto* text : {"", "{", "[]", R"({"geoCampaign":[]})"}) {
    host_.phone.files().change(cacheFile, text);
    service_.reset();
    EXPECT_THAT(service().current(), IsNull()) << text;
    EXPECT_EQ(host_.phone.files().content(cacheFile), text) << "left alone";
  }
  host_.phone.files().change(cacheFile, twoAndOne);
  host_.phone.files().fail(sim::StorageFault::reads);
  service_.reset();
  EXPECT_THAT(service().current(), IsNull());
  EXPECT_THAT(host_.seen(), IsEmpty());
}

TEST_F(GeofenceServiceTest, TheTimerFollowsTheApplicationsStateAtEachRestart) {
  startAndFetch();
  EXPECT_THAT(seenAfter(298s), IsEmpty());
  EXPECT_THAT(seenAfter(1s), Contains(StartsWith("INFO 🌐 /check-geofence (timer)")));
  host_.phone.application().moveTo(ApplicationState::background);
  EXPECT_THAT(seenAfter(1799s), Not(Contains(asked)));
  EXPECT_THAT(seenAfter(1s), Contains(asked));
  host_.phone.application().moveTo(ApplicationState::active);
  EXPECT_THAT(seenAfter(1799s), Not(Contains(asked))) << "set while still in the background";
  EXPECT_THAT(seenAfter(1s), Contains(asked));
}

TEST_F(GeofenceServiceTest, ATickDuringAFetchIsSkippedForGood) {
  host_.phone.http().forget("POST", path);
  host_.phone.http().answer("POST", path, {HttpAnswer::reply(200, twoAndOne).after(55s)});
  start();
  (void)seenAfter(299s);
  service().refetch();
  (void)host_.seen();
  EXPECT_THAT(seenAfter(1s),
              ElementsAre("INFO ⏭️ Geofence fetch (timer) skipped: fetch already in flight"));
  EXPECT_THAT(seenAfter(298s), Not(Contains(asked)));
}

TEST_F(GeofenceServiceTest, ASecondStartReplacesTimerAndFixesButNotTheObservers) {
  startAndFetch();
  start();
  (void)seenAfter(299s);
  EXPECT_THAT(seenAfter(2s), Contains(asked));
  EXPECT_THAT(seenAfter(298s), Not(Contains(asked))) << "one timer";
  host_.phone.application().moveTo(ApplicationState::background);
  (void)seenAfter(200s);
  locations_.send(host_.phone.fixAt({51.6, -0.12}));
  const auto seen = host_.seen();
  EXPECT_EQ(std::count(seen.begin(), seen.end(), asked), 1) << "one subscription";
}

TEST_F(GeofenceServiceTest, AStartWithoutAKeyEndsTheTimer) {
  startAndFetch();
  start("");
  (void)seenAfter(1s);
  EXPECT_THAT(seenAfter(1h), IsEmpty());
}

TEST_F(GeofenceServiceTest, MovementInTheBackgroundRefreshes) {
  startAndFetch();
  host_.phone.application().moveTo(ApplicationState::background);
  (void)seenAfter(118s);
  const auto far = host_.phone.fixAt({51.51, -0.12});
  locations_.send(far);
  EXPECT_THAT(host_.seen(), IsEmpty()) << "119 s after the fetch";
  (void)seenAfter(1s);
  locations_.send(host_.phone.fixAt({51.501, -0.12}));
  EXPECT_THAT(host_.seen(), IsEmpty()) << "111 m";
  locations_.send(std::nullopt);
  locations_.send(far);
  EXPECT_THAT(
      host_.seen(),
      ElementsAre(
          "INFO 📍 Significant background location update (1112m) → refreshing geofences",
          "INFO 🌐 /check-geofence (significantLocationChange) [legacy auth] → 51.51,-0.12 | segments: ",
          asked));
}

TEST_F(GeofenceServiceTest, TheFirstFixInTheBackgroundHasNothingToMeasureFrom) {
  manager_ = nullptr;
  host_.phone.application().moveTo(ApplicationState::background);
  start();
  (void)host_.seen();
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
  EXPECT_THAT(seenAfter(1h), IsEmpty());
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
  EXPECT_EQ(seenAfter(1h).back(), "file orlan-geofences.json") << "kept for the next service";
}

}  // namespace
}  // namespace orlan::test
