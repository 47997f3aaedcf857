// Wherever the library calls its host, the host may end the library, begin it anew, start again or drop what
// it gave. A day that meets every such place is lived once for each of them and each of these; what goes
// wrong is read of freed memory, which the sanitizers see.
#include <gmock/gmock.h>

#include <map>

#include "support/SimulatedHost.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;
using test::SimulatedHost;

constexpr char market[] =
    R"({"geoCampaign":[{"campaignName":"Market","campaignId":4,"type":"GEO","locations":[],
  "active":"1","testIds":"","segmentationTags":"","locationsArray":{"locationId":7,"_id":"","geofence":[
    {"position":0,"latitude":"51.499","longitude":"-0.121","_id":""},
    {"position":1,"latitude":"51.499","longitude":"-0.119","_id":""},
    {"position":2,"latitude":"51.501","longitude":"-0.119","_id":""},
    {"position":3,"latitude":"51.501","longitude":"-0.121","_id":""}]},
  "notificationsArray":[{"id":42,"campaignId":[4],"headline":"Hello","body":"Come in","type":"INFO","media":[],
    "cta":[],"segmentationTags":"","testIds":"","start":"","end":"","questions":[],"activation":"ON_ENTER"}]}],
  "pushCampaign":[]})";
const Coordinate inside{51.5, -0.12};
const Coordinate outside{51.5, -0.2};

/// A place where the library calls the host, and the how manieth time it does.
using Place = std::pair<std::string, int>;

class Day {
 public:
  using Act = void (Day::*)();

  explicit Day(Place place = {}, Act act = nullptr) : place_(std::move(place)), act_(act) {
    sim::SimulatedHttp& http = host.phone.http();
    http.forget("POST", "/api/check-geofence");
    http.answer("POST", "/api/check-geofence", {sim::HttpAnswer::reply(200, market)});
    http.answer("POST", "/api/survey-response", {sim::HttpAnswer::reply(200)});
  }

  void live() {
    wire();
    using Step = std::function<void()>;
    const auto plugin = [this]() -> OrlanPlugin& { return host.plugin(); };
    const std::vector<Step> steps = {
        [&] { plugin().start(Config::Environment::staging, {}, delegate()); },  // no property list: refused
        [&] { host.phone.moveTo(outside); },
        [&] { start(); },
        [&] { host.phone.moveTo(inside); },
        [&] { plugin().updateSegments({"vip"}, hears<bool>("updateSegments")); },
        [&] { plugin().fetchConfiguration(true, hears<OrlanConfiguration>("fetchConfiguration")); },
        [&] { plugin().refreshPrivacyText(hears<std::string>("refreshPrivacyText")); },
        [&] { plugin().submitSurveyResponse("1", {}, {}, hears<bool>("submitSurveyResponse")); },
        [&] { plugin().trackSurveyEvent("1", {}, "shown", hears<bool>("trackSurveyEvent")); },
        [&] { plugin().requestPushPermission(); },
        [&] { tap(); },
        [&] { NotificationManager::shared().clearLatest(); },
        [&] { host.phone.notifications().setDelegate(NotificationBridge::shared().weak_from_this()); },
        [&] { tap(); },
        [&] { host.phone.moveTo(outside); },
        [&] { host.phone.application().moveTo(ApplicationState::background); },
        [&] { host.phone.moveTo(inside); },
        [&] { host.phone.moveTo(outside); },
        [&] { host.phone.locations().setAuthorization(LocationAuthorization::denied); },
    };
    for (const Step& step : steps) {
      if (!host.runtime) return;
      step();
      host.world.runFor(5s);
    }
  }

  // What the host does from inside.
  void end() { host.quit(); }
  void beginAnew() {
    host.quit();
    host.launch();
    start();
  }
  void start() { host.plugin().start("KEY", Config::Environment::staging, {}, delegate()); }
  void drop() {
    bag_ = {};
    ears_.reset();
  }

  SimulatedHost host;
  std::map<std::string, int> reached;
  bool acted = false;

 private:
  struct Ears;

  void reach(const std::string& name) {
    if (Place(name, ++reached[name]) != place_ || std::exchange(acted, true)) return;
    (this->*act_)();
  }

  template <class T>
  Completion<T> hears(const char* name) {
    return [this, name](const Result<T>&) { reach(name); };
  }

  template <class T>
  void hear(const char* name, Publisher<T>& stream) {
    bag_.add(stream.subscribe([this, name](const T&) { reach(name); }));
  }

  [[nodiscard]] std::weak_ptr<OrlanPluginDelegate> delegate() const;
  void wire();

  void tap() {
    if (!host.phone.scheduled().empty()) {
      host.phone.notifications().tap({host.phone.scheduled().front(), "default"});
    }
  }

  const Place place_;
  const Act act_;
  std::shared_ptr<Ears> ears_;
  SubscriptionBag bag_;
};

struct Day::Ears : OrlanPluginDelegate,
                   OrlanNotificationDelegate,
                   ForegroundGeofenceDelegate,
                   BackgroundGeofenceDelegate {
  explicit Ears(Day& of) : day(of) {}
  using Text = const std::string&;
  void didAuthenticate(OrlanPlugin&, Text, Text) override { day.reach("didAuthenticate"); }
  void didFailWith(OrlanPlugin&, const Error&) override { day.reach("didFailWith"); }
  void orlanDidReceive(const NotificationResponse&) override { day.reach("orlanDidReceive"); }
  void didEnterCampaign(std::int64_t, std::int64_t) override { day.reach("didEnterCampaign"); }
  void didExitCampaign(std::int64_t, std::int64_t) override { day.reach("didExitCampaign"); }
  void didEnterRegion(std::int64_t, std::int64_t) override { day.reach("didEnterRegion"); }
  void didExitRegion(std::int64_t, std::int64_t) override { day.reach("didExitRegion"); }
  Day& day;
};

std::weak_ptr<OrlanPluginDelegate> Day::delegate() const {
  return ears_;
}

void Day::wire() {
  ears_ = std::make_shared<Ears>(*this);
  OrlanServices& library = host.services();
  library.foregroundMonitor->setDelegate(ears_);
  library.backgroundMonitor->setDelegate(ears_);
  library.notificationBridge->setDelegate(ears_);
  const std::vector<std::function<void()>> streams = {
      [&] { hear("locationStatus", library.locationPermission->statusPublisher()); },
      [&] { hear("lastLocation", library.locationPermission->lastLocationPublisher()); },
      [&] { hear("pushStatus", library.notificationPermission->statusPublisher()); },
      [&] { hear("current", library.geofence->currentPublisher()); },
      [&] { hear("campaigns", library.geofence->campaigns()); },
      [&] { hear("polygons", library.geofence->polygonsPublisherPublic()); },
      [&] { hear("circles", library.backgroundMonitor->circlesPublisher()); },
      [&] { hear("enterInFront", library.foregroundMonitor->enterPublisher()); },
      [&] { hear("exitInFront", library.foregroundMonitor->exitPublisher()); },
      [&] { hear("enterBehind", library.backgroundMonitor->enterPublisher()); },
      [&] { hear("exitBehind", library.backgroundMonitor->exitPublisher()); },
      [&] { hear("notifications", library.notificationManager->publisher()); },
      [&] { hear("latest", library.notificationManager->latestPublisher()); },
  };
  for (const auto& stream : streams) {
    if (host.runtime && !acted) stream();
  }
}

TEST(EndingFromInside, HoldsAtEveryCallOut) {
  Day whole;
  whole.live();
  std::vector<std::string> names;
  for (const auto& [name, times] : whole.reached) names.push_back(name);
  EXPECT_EQ(names.size(), 25U) << ::testing::PrintToString(names);

  const std::pair<const char*, Day::Act> acts[] = {{"ends the library", &Day::end},
                                                   {"begins it anew", &Day::beginAnew},
                                                   {"starts again", &Day::start},
                                                   {"drops what it gave", &Day::drop}};
  for (const auto& [what, act] : acts) {
    for (const auto& [name, times] : whole.reached) {
      for (int nth = 1; nth <= times; ++nth) {
        SCOPED_TRACE(testing::Message() << name << " (" << nth << ") " << what);
        Day day({name, nth}, act);
        day.live();
        EXPECT_TRUE(day.acted);
        if (act != &Day::end) continue;
        day.host.seen.lines.clear();
        day.host.phone.moveTo(inside);
        day.host.world.runFor(1h);
        EXPECT_THAT(day.host.seen.lines, testing::IsEmpty());
      }
    }
  }
}

}  // namespace
}  // namespace orlan
