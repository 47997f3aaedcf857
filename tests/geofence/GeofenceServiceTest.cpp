#include <gmock/gmock.h>

#include "orlan/geofence/CampaignCache.hpp"
#include "orlan/geofence/GeofenceService.hpp"
#include "support/FloorHost.hpp"

namespace orlan::test {
namespace {

using sim::HttpAnswer;
using testing::AllOf;
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

/// What the backend answers: two campaigns with an area at home, and one to be pushed.
const std::string twoAndOne = [] {
  const auto campaign = [](const std::string& id, const std::string& place, const std::string& notification) {
    return R"({"campaignName":"","type":"","locations":[],"active":"","testIds":"","segmentationTags":"",)"
           R"("campaignId":)" +
           id + place + R"(,"notificationsArray":[)" + notification + "]}";
  };
  const std::string area = R"(,"locationsArray":{"locationId":10,"_id":"","geofence":[
      {"position":0,"_id":"","latitude":"51.499","longitude":"-0.121"},
      {"position":1,"_id":"","latitude":"51.499","longitude":"-0.119"},
      {"position":2,"_id":"","latitude":"51.501","longitude":"-0.119"}]})";
  const std::string push = R"({"id":6,"campaignId":[],"headline":"Push","body":"","type":"t","media":[],
      "questions":[],"cta":[],"segmentationTags":"","testIds":"","start":"2026-01-01","end":"2026-02-01",
      "activation":""})";
  return R"({"geoCampaign":[)" + campaign("1", area, "") + "," + campaign("2", area, "") +
         R"(],"pushCampaign":[)" + campaign("3", "", push) + "]}";
}();

class Sink final : public PolygonSink {
 public:
  Sink(Transcript& transcript, std::string name) : transcript_(transcript), name_(std::move(name)) {}
  void takePolygons(const std::shared_ptr<const TrackedPolygons>& polygons) override {
    transcript_.note(name_ + " takes " + std::to_string(polygons->set().size()));
  }

 private:
  Transcript& transcript_;
  std::string name_;
};

class GeofenceServiceTest : public testing::Test {
 protected:
  GeofenceServiceTest() { host_.phone.http().answer("POST", path, {HttpAnswer::reply(200, twoAndOne)}); }

  void start(const std::string& key = "key") { service_->start(key, Config::Environment::staging, manager_); }

  /// Started and fetched, nothing unseen.
  void startAndFetch() {
    start();
    (void)host_.seenAfter(1s);
  }

  FloorHost host_{{.location = {.position = Location{home, 5.0, {}}}}};
  CampaignCache cache_{host_.platform.files, host_.platform.queues};
  CurrentValue<std::optional<Location>> locations_;
  Sink foreground_{host_.transcript, "foreground"};
  Sink background_{host_.transcript, "background"};
  std::shared_ptr<LocationManager> manager_ = host_.platform.locations.makeManager("host");
  std::unique_ptr<GeofenceService> service_ = std::make_unique<GeofenceService>(
      host_.platform,
      GeofenceService::Neighbours{host_.logger, host_.api, cache_, locations_, foreground_, background_});
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
  EXPECT_EQ(host_.seenAfter(1h).back(), "file orlan-geofences.json");
  const GeofenceService next(host_.platform,
                             {host_.logger, host_.api, cache_, locations_, foreground_, background_});
  EXPECT_THAT(next.currentPolygons(), SizeIs(2)) << "kept for the next service";
}

TEST_F(GeofenceServiceTest, TheSameAnswerAgainSaysAndWritesAllOfItAgain) {
  Lines below;  // what the transcript of this floor leaves out
  struct Conversions final : phone::PhoneObserver {
    explicit Conversions(Lines& to) : lines(to) {}
    void consoleLines(const ConsoleLines& printed) override {
      printed.forEach([this](const ConsoleLine& line) {
        if (line.message.starts_with("✅ Conversion")) lines.emplace_back(line.message);
      });
    }
    Lines& lines;
  } conversions(below);
  host_.phone.observe(conversions);
  const std::string other = R"({"geoCampaign":[],"pushCampaign":[]})";
  host_.phone.http().forget("POST", path);
  host_.phone.http().answer("POST", path,
                            {HttpAnswer::reply(200, twoAndOne), HttpAnswer::reply(200, twoAndOne),
                             HttpAnswer::reply(200, other), HttpAnswer::reply(200, twoAndOne)});
  const auto again = [this] {
    service_->refetch();
    return host_.seenAfter(1s);
  };
  startAndFetch();
  const auto first = service_->current();
  host_.phone.files().change(cacheFile, std::nullopt);
  EXPECT_THAT(again(), AllOf(Contains("file orlan-geofences.json"), Contains("background takes 2")));
  EXPECT_EQ(service_->current(), first) << "not made anew";
  EXPECT_EQ(host_.phone.files().content(cacheFile), twoAndOne) << "although it had vanished";
  EXPECT_THAT(again(), Contains("background takes 0"));
  EXPECT_EQ(host_.phone.files().content(cacheFile), other);
  EXPECT_THAT(again(), Contains("background takes 2"));
  EXPECT_EQ(*service_->current(), *first);
  const std::string line = "✅ Conversion complete – 2 GEO + 1 PUSH campaign(s)";
  EXPECT_THAT(below, ElementsAre(line, line, "✅ Conversion complete – 0 GEO + 0 PUSH campaign(s)", line));
}

TEST_F(GeofenceServiceTest, TheCacheGivesWhatTheFileHoldsWheneverItWasRead) {
  struct Row {
    const char* what;
    std::optional<std::string> whenRead, whenTaken;
    bool runs;  // before it is taken
    bool holds;
  };
  for (const Row& row : {Row{"read ahead", twoAndOne, twoAndOne, true, true},
                         {"taken before that", twoAndOne, twoAndOne, false, true},
                         {"not there yet", std::nullopt, twoAndOne, true, true},
                         {"there no more", twoAndOne, std::nullopt, true, false},
                         {"of no use", "[]", "[]", true, false}}) {
    CampaignCache cache(host_.platform.files, host_.platform.queues);
    host_.phone.files().change(cacheFile, row.whenRead);
    cache.preload();
    if (row.runs) host_.world.settle();
    host_.phone.files().change(cacheFile, row.whenTaken);
    const auto answer = cache.take();
    EXPECT_EQ(answer ? answer->polygons()->set().size() : 0U, row.holds ? 2U : 0U) << row.what;
  }
}

}  // namespace
}  // namespace orlan::test
