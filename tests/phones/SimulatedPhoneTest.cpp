#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "orlan/base/text.hpp"
#include "phones/simulated/Recorder.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan::sim {
namespace {

using namespace std::chrono_literals;

struct SimulatedPhoneTest : ::testing::Test {
  void SetUp() override { phone.observe(recorder); }

  /// Sends and remembers when and how it ended.
  void send(const std::string& url, Duration timeout = 60s, const std::string& method = "GET") {
    handles.push_back(
        phone.platform().http.send({method, url, {}, std::nullopt, timeout}, [this](Result<HttpReply> r) {
          std::string line = text::fixed(seconds(world.now()), 2) + " ";
          if (!r) {
            line += r.error().description;
          } else {
            line +=
                (r->status ? std::to_string(*r->status) : "no HTTP") + " " + r->body.value_or("(no body)");
          }
          ended.push_back(line);
        }));
  }

  World world;
  SimulatedPhone phone{world};
  Recorder recorder;
  std::vector<Subscription> handles;
  std::vector<std::string> ended;
};

TEST_F(SimulatedPhoneTest, TheNthRequestGetsTheNthAnswer) {
  phone.http().answer(
      "GET", "/x?y=z",
      {HttpAnswer::reply(200, "first"), HttpAnswer::reply(200, "").after(0s), HttpAnswer::reply(204)});
  phone.http().answer("GET", "/x?y=z", {HttpAnswer::reply(500, "the first route counts")});
  for (int i = 0; i < 4; ++i) {
    send("https://api.example/x?y=z");
    world.runFor(1s);
  }
  EXPECT_EQ(ended, (std::vector<std::string>{"0.05 200 first", "1.00 200 ", "2.05 204 (no body)",
                                             "3.05 204 (no body)"}));
  phone.http().forget("GET", "/x?y=z");
  phone.http().answer("GET", "/x?y=z", {HttpAnswer::reply(500, "now it does")});
  send("https://api.example/x?y=z");
  world.runFor(1s);
  EXPECT_EQ(ended.back(), "4.05 500 now it does");
}

TEST_F(SimulatedPhoneTest, FaultsComeWhenTheyAreDueAndTimeoutsCutThemShort) {
  phone.http().answer("GET", "/cancelled", {HttpAnswer::cancelled().after(1s)});
  phone.http().answer("GET", "/silent", {HttpAnswer::timeout().after(30s)});
  phone.http().answer("GET", "/other", {HttpAnswer::notHttp().after(2s)});
  phone.http().answer("GET", "/slow", {HttpAnswer::reply(200, "just in time").after(60s)});
  phone.http().answer("GET", "/slower", {HttpAnswer::reply(200, "too late").after(60s + Duration(1))});
  for (const char* path : {"/cancelled", "/silent", "/other", "/slow", "/slower", "/nobody"}) {
    send(std::string("https://api.example") + path);
  }
  send("https://api.example/other", 1s);
  send("https://api.example/other", 60s, "POST");  // another method is another route
  world.runFor(100s);
  const std::string timeout = urlErrors::timedOut().description;
  const std::string unreachable = urlErrors::cannotConnectToHost().description;
  EXPECT_EQ(ended, (std::vector<std::string>{"0.05 " + unreachable, "0.05 " + unreachable,
                                             "1.00 " + urlErrors::cancelled().description, "1.00 " + timeout,
                                             "2.00 no HTTP (no body)", "30.00 " + timeout,
                                             "60.00 200 just in time", "60.00 " + timeout}));
}

TEST_F(SimulatedPhoneTest, ChangesByOthersAreNotTheApplications) {
  phone.store().change("key", 1);
  phone.files().change("file", "text");
  EXPECT_EQ(phone.platform().store.number("key"), 1.0);
  EXPECT_EQ(*phone.platform().files.read("/phone/caches/file"), "text");
  phone.store().change("key", nullptr);
  phone.files().change("file", std::nullopt);
  EXPECT_EQ(phone.platform().store.get("key"), std::nullopt);
  EXPECT_FALSE(phone.platform().files.exists("/phone/caches/file"));
  EXPECT_FALSE(phone.platform().files.writeAtomically(std::string("/phone/caches/a\0b", 17), "x"));
  EXPECT_TRUE(recorder.stored.empty());
  EXPECT_TRUE(recorder.filesWritten.empty());
}

TEST_F(SimulatedPhoneTest, ARelaunchKeepsThePhoneAndDropsTheProcess) {
  Platform platform = phone.platform();
  std::vector<std::string> heard;
  struct Delegate : NotificationCenterDelegate, LocationManagerDelegate {
    explicit Delegate(std::vector<std::string>& to) : lines(to) {}
    void willPresent(const NotificationRequest&, std::function<void(std::uint32_t)>) override {
      lines.push_back("present");
    }
    void didEnterRegion(LocationManager&, const CircularRegion&) override { lines.push_back("enter"); }
    std::vector<std::string>& lines;
  };
  const auto note = [&](const char* what) { return [&heard, what] { heard.emplace_back(what); }; };
  const auto delegate = std::make_shared<Delegate>(heard);
  const auto manager = platform.locations.makeManager("test");
  manager->setDelegate(delegate);
  manager->startMonitoring({"here", {{51.5, 0.0}, 100.0}});
  platform.notifications.setDelegate(delegate);
  platform.notifications.add({"due later", {}, 10s},
                             [&](const Result<void>&) { heard.push_back("scheduled"); });
  platform.notifications.authorizationStatus([&](NotificationAuthorization) { heard.push_back("status"); });
  const auto observer = platform.application.observe(ApplicationSignal::didBecomeActive, note("active"));
  const auto timer = platform.main.every(1s, note("tick"));
  platform.main.async(note("task"));
  send("https://api.example/x");

  phone.relaunch(ApplicationState::background);
  EXPECT_TRUE(recorder.signals.empty());
  phone.application().moveTo(ApplicationState::active);
  phone.moveTo({51.5, 0.0});
  world.runFor(15s);
  EXPECT_EQ(heard, std::vector<std::string>{});
  EXPECT_EQ(ended, std::vector<std::string>{});
  EXPECT_EQ(recorder.regions.back(), std::pair(phone::RegionAction::enter, std::string("here")));
  EXPECT_EQ(recorder.delivered.size(), 1U);  // nobody there to be asked
  EXPECT_EQ(phone.scheduled().size(), 1U);
}

TEST(SimulatedPhone, ComesAsItsSettingsSay) {
  World world;
  PhoneSettings settings;
  settings.device.vendorIdentifier = "abcdef00-0000-4000-8000-00000000000f";
  settings.device.info.set("CFBundleName", "Shop");
  settings.offsetFromUtc = [](TimePoint) { return 2h; };
  SimulatedPhone phone(world, settings);
  const Platform platform = phone.platform();

  EXPECT_EQ(platform.device.vendorIdentifier(), "ABCDEF00-0000-4000-8000-00000000000F");
  EXPECT_EQ(platform.bundle.info("CFBundleName"), json::Value("Shop"));
  EXPECT_EQ(platform.bundle.info("CFBundleShortVersionString"), json::Value("1.0"));
  EXPECT_TRUE(platform.bundle.info("other").isNull());
  EXPECT_FALSE(platform.bundle.propertyList("Other"));
  EXPECT_EQ(platform.clock.offsetFromUtc(platform.clock.now()), 2h);
}

}  // namespace
}  // namespace orlan::sim
