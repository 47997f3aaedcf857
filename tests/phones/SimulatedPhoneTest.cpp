#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "orlan/base/text.hpp"
#include "phones/simulated/Recorder.hpp"
#include "phones/simulated/SimulatedPhone.hpp"
#include "tests/phones/contract/HttpOutcome.hpp"

namespace orlan::sim {
namespace {

using namespace std::chrono_literals;

struct SimulatedPhoneTest : ::testing::Test {
  void SetUp() override { phone.observe(recorder); }

  /// Sends and remembers when and how it ended.
  void send(const std::string& path, Duration timeout = 60s, const std::string& method = "GET") {
    HttpRequest request{method, "https://api.example" + path, {}, std::nullopt, timeout};
    handles.push_back(phone.platform().http.send(std::move(request), [this](const Result<HttpReply>& result) {
      ended.push_back(text::fixed(seconds(world.now()), 2) + " " + orlan::test::summary(result));
    }));
  }

  World world;
  SimulatedPhone phone{world};
  Recorder recorder;
  std::vector<Subscription> handles;
  std::vector<std::string> ended;
};

TEST_F(SimulatedPhoneTest, FaultsComeWhenTheyAreDueAndTimeoutsCutThemShort) {
  phone.http().answer("GET", "/cancelled", {HttpAnswer::cancelled().after(1s)});
  phone.http().answer("GET", "/silent", {HttpAnswer::timeout().after(30s)});
  phone.http().answer("GET", "/other", {HttpAnswer::notHttp().after(2s)});
  phone.http().answer("GET", "/slow", {HttpAnswer::reply(200, "just in time").after(60s)});
  phone.http().answer("GET", "/slower", {HttpAnswer::reply(200, "too late").after(60s + Duration(1))});
  for (const char* path : {"/cancelled", "/silent", "/other", "/slow", "/slower", "/nobody"}) send(path);
  send("/other", 1s);
  send("/other", 60s, "POST");  // another method is another route
  world.runFor(100s);
  EXPECT_EQ(ended,
            (std::vector<std::string>{"0.05 URLError -1004", "0.05 URLError -1004", "1.00 URLError -999",
                                      "1.00 URLError -1001", "2.00 no HTTP", "30.00 URLError -1001",
                                      "60.00 200: just in time", "60.00 URLError -1001"}));
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
  EXPECT_TRUE(recorder.stored.empty());
  EXPECT_TRUE(recorder.filesWritten.empty());
}

TEST_F(SimulatedPhoneTest, AppendingIsForgottenWhereNobodyWillRead) {
  PhoneSettings settings;
  settings.keepsAppended = false;
  SimulatedPhone small(world, settings);
  FileSystem& files = small.platform().files;
  EXPECT_FALSE(files.append("/phone/caches/log", "there is no such file"));
  ASSERT_TRUE(files.writeAtomically("/phone/caches/log", "begun\n"));
  EXPECT_TRUE(files.append("/phone/caches/log", "more\n"));
  EXPECT_EQ(small.files().content("log"), "begun\n");
}

TEST_F(SimulatedPhoneTest, ARelaunchKeepsThePhoneAndDropsTheProcess) {
  const Platform platform = phone.platform();
  std::string heard;
  const auto note = [&heard](const char* what) { return [&heard, what](auto&&...) { heard += what; }; };
  struct Delegate : NotificationCenterDelegate, LocationManagerDelegate {
    explicit Delegate(std::string& to) : line(to) {}
    void willPresent(const NotificationRequest&, std::function<void(std::uint32_t)>) override {
      line += "presented ";
    }
    void didEnterRegion(LocationManager&, const CircularRegion&) override { line += "entered "; }
    std::string& line;
  };
  const auto delegate = std::make_shared<Delegate>(heard);
  const auto manager = platform.locations.makeManager("test");
  manager->setDelegate(delegate);
  manager->startMonitoring({"here", {{51.5, 0.0}, 100.0}});
  platform.notifications.setDelegate(delegate);
  platform.notifications.add({"due later", {}, 10s}, note("scheduled "));
  platform.notifications.authorizationStatus(note("status "));
  const auto observer = platform.application.observe(ApplicationSignal::didBecomeActive, note("active "));
  const auto timer = platform.main.every(1s, note("tick "));
  platform.main.async(note("task "));
  send("/x");

  phone.relaunch(ApplicationState::background);
  EXPECT_TRUE(recorder.signals.empty());
  phone.application().moveTo(ApplicationState::active);
  phone.moveTo({51.5, 0.0});
  world.runFor(15s);
  EXPECT_EQ(heard, "");
  EXPECT_EQ(ended, std::vector<std::string>{});
  EXPECT_EQ(recorder.regions.back(), std::pair(phone::RegionAction::enter, std::string("here")));
  EXPECT_EQ(recorder.delivered.size(), 1U);  // nobody there to be asked
  EXPECT_EQ(phone.scheduled().size(), 1U);
}

}  // namespace
}  // namespace orlan::sim
