#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "linux/LoopbackServer.hpp"
#include "linux/TemporaryDirectory.hpp"
#include "phones/linux/HostDevice.hpp"
#include "phones/linux/LinuxPhone.hpp"
#include "phones/linux/TrackPlayer.hpp"
#include "phones/linux/directories.hpp"

namespace orlan::linuxphone {
namespace {

PhoneConfig quiet(const std::string& home) {
  PhoneConfig config;
  config.home = home;
  config.console = {};
  config.systemLog = {};
  return config;
}

TEST(LinuxPhone, ItsEndAnswersRequestsAndRunsWhatTheyPostAndTheNextFindsIt) {
  test::LoopbackServer server([](test::Peer& peer) { peer.waitForHangUp(); });
  const test::TemporaryDirectory home;
  std::vector<std::string> order;
  std::optional<std::string> identity;
  Subscription request;
  {
    LinuxPhone phone(quiet(home.path()));
    const Platform platform = phone.platform();
    identity = platform.device.vendorIdentifier();
    request = platform.http.send({"GET", server.url(), {}, {}}, [&](const Result<HttpReply>& result) {
      EXPECT_EQ(result.error(), urlErrors::cancelled());
      platform.main.async([&] {
        order.push_back("posted by the answer");
        platform.store.set("from the last task", true);  // everything is still there
      });
    });
    phone.stop();
    phone.run();
    order.push_back("run is over");
  }
  EXPECT_EQ(order, (std::vector<std::string>{"run is over", "posted by the answer"}));
  LinuxPhone next(quiet(home.path()));
  EXPECT_TRUE(next.platform().store.boolean("from the last task"));
  EXPECT_TRUE(identity);
  EXPECT_EQ(next.platform().device.vendorIdentifier(), identity);
  EXPECT_EQ(next.platform().files.cachesDirectory(), home.file("cache"));
}

TEST(LinuxPhone, AnUnusableHomeIsToldAndTheRestWorks) {
  const test::TemporaryDirectory home;
  std::ofstream(home.file("file")) << "in the way";
  std::vector<std::string> said;
  PhoneConfig config = quiet(home.file("file"));
  config.trouble = [&](const std::string& what) { said.push_back(what); };
  LinuxPhone phone(std::move(config));
  EXPECT_EQ(said.size(), 2U);  // the cache, the store
  const Platform platform = phone.platform();
  platform.store.set("key", 1);
  EXPECT_EQ(platform.store.number("key"), 1.0);
  EXPECT_EQ(platform.device.vendorIdentifier(), std::nullopt);
  EXPECT_FALSE(platform.files.writeAtomically(platform.files.cachesDirectory() + "/x", "y"));
}

TEST(LinuxPhone, ATrackReplaysFastWithEveryTimerTrue) {
  const test::TemporaryDirectory home;
  const TimePoint recorded = std::chrono::sys_days(std::chrono::November / 29 / 2019);
  Track track;
  for (int minute : {0, 2, 2, 20}) {
    track.fixes.push_back({{51.0, minute * 0.01}, 5.0, recorded + std::chrono::minutes(minute)});
  }
  PhoneConfig config = quiet(home.path());
  config.timeScale = 6000.0;
  config.wallClock = recorded;
  LinuxPhone phone(std::move(config));
  struct Watcher : phone::PhoneObserver {
    explicit Watcher(Clock& c) : clock(c) {}
    void fixes(std::span<const Location> batch) override {
      got.insert(got.end(), batch.begin(), batch.end());
      EXPECT_GE(clock.now(), got.back().timestamp);  // never before its time
    }
    Clock& clock;
    std::vector<Location> got;
  } watcher(phone.clock());
  phone.observe(watcher);
  int ticks = 0;
  const auto everyTenMinutes = phone.main().every(std::chrono::minutes(10), [&] { ++ticks; });
  const TimePoint begun = phone.clock().now();
  phone.player().play(track, [&] { phone.stop(); });
  phone.run();

  ASSERT_EQ(watcher.got.size(), 4U);
  EXPECT_GE(watcher.got[0].timestamp, begun);  // the phone's clock, not the file's
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(watcher.got[i].coordinate, track.fixes[i].coordinate);
    EXPECT_EQ(watcher.got[i].timestamp - watcher.got[0].timestamp, track.fixes[i].timestamp - recorded);
  }
  EXPECT_GE(ticks, 1);
}

struct Walker : LocationManagerDelegate {
  void didUpdateLocations(LocationManager&, std::span<const Location> batch) override {
    heard.push_back(batch.back().timestamp);
    if (const auto now = onUpdate) now();  // a copy: it may be replaced from inside
  }
  std::vector<TimePoint> heard;
  std::function<void()> onUpdate;
};

class TrackPlayerTest : public ::testing::Test {
 protected:
  TrackPlayerTest() {
    manager->setDelegate(walker);
    manager->startUpdatingLocation();
    for (int i = 0; i < 4; ++i) track.fixes.push_back({{0, i * 1.0}, 5, TimePoint(std::chrono::minutes(i))});
  }
  bool runUntil(const std::function<bool()>& done) { return loop.runUntil(done, std::chrono::seconds(30)); }

  const ReplayTime time{1e5, {}};
  EventLoop loop{time};
  phone::PhoneObserver nobody;
  phone::LocationHub hub{loop, nobody};
  TrackPlayer player{loop, time, hub};
  const std::shared_ptr<Walker> walker = std::make_shared<Walker>();
  const std::shared_ptr<LocationManager> manager = hub.makeManager("test");
  Track track;
  std::vector<std::string> finished;
};

TEST_F(TrackPlayerTest, AListenerMayStopItOrPlayAnother) {
  walker->onUpdate = [&] {
    walker->onUpdate = [&] { player.stop(); };
    player.play(track, [&] { finished.push_back("second"); });
  };
  player.play(track, [&] { finished.push_back("first"); });
  bool over = false;
  const auto later = loop.after(std::chrono::minutes(10), [&] { over = true; });
  ASSERT_TRUE(runUntil([&] { return over; }));
  EXPECT_EQ(player.delivered(), 1U);  // of the second, which its first fix stopped
  EXPECT_EQ(finished, std::vector<std::string>{});

  player.play(Track{}, [&] { finished.push_back("empty"); });
  EXPECT_TRUE(runUntil([&] { return !finished.empty(); }));
}

TEST_F(TrackPlayerTest, StandingStillCostsTheWalkNothingButTime) {
  walker->onUpdate = [&] {
    if (walker->heard.size() == 2) player.standStill();
  };
  player.standStill();  // nothing is walked yet
  EXPECT_FALSE(player.isStanding());
  player.play(track, [&] { finished.push_back("walk"); });
  ASSERT_TRUE(runUntil([&] { return player.isStanding(); }));
  bool anHourPassed = false;
  const auto hour = loop.after(std::chrono::hours(1), [&] { anHourPassed = true; });
  ASSERT_TRUE(runUntil([&] { return anHourPassed; }));
  EXPECT_EQ(walker->heard.size(), 2U);
  EXPECT_EQ(player.walked(), Duration(std::chrono::minutes(1)));

  player.walkOn();
  ASSERT_TRUE(runUntil([&] { return !finished.empty(); }));
  ASSERT_EQ(walker->heard.size(), 4U);
  EXPECT_GE(walker->heard[2] - walker->heard[1], std::chrono::minutes(61)) << "stamped with the time stood";
  EXPECT_EQ(walker->heard[3] - walker->heard[2], std::chrono::minutes(1));
}

TEST(Directories, FollowHomeOrTheUsersOwn) {
  const struct {
    const char* home;
    const char* user;
    const char* xdgCache;
    const char* xdgData;
    std::string cache;
    std::string data;
  } rows[] = {
      {"/h/../k/", "/u", "/x", "", "/k/cache", "/k/data"},
      {"", "/u", "/c", "/d/", "/c/app", "/d/app"},
      {"", "/u", "relative", "", "/u/.cache/app", "/u/.local/share/app"},
  };
  for (const auto& row : rows) {
    ::setenv("HOME", row.user, 1);
    ::setenv("XDG_CACHE_HOME", row.xdgCache, 1);
    ::setenv("XDG_DATA_HOME", row.xdgData, 1);
    const auto found = directories(row.home, "app");
    EXPECT_EQ(found.cache, row.cache);
    EXPECT_EQ(found.data, row.data);
  }
}

TEST(HostDevice, IdentityIsMadeAnewOnlyWhenItsFileIsUnusable) {
  SystemRandom random;
  const test::TemporaryDirectory directory;
  const std::string file = directory.file("device-id");
  const auto identity = [&] { return HostDevice(file, random).vendorIdentifier(); };
  const auto first = identity();
  EXPECT_EQ(identity(), first);
  std::ofstream(file) << "00000000-0000-4000-8000-00000000000g";
  const auto second = identity();
  EXPECT_NE(second, first);
  EXPECT_EQ(identity(), second);
}

TEST(HostDevice, LocaleComesFromThePosixName) {
  for (const auto& [posix, expected] : {std::pair{"sr_RS.UTF-8@latin", "sr_RS"},
                                        {"de_DE@euro", "de_DE"},
                                        {"fr", "fr"},
                                        {"C.UTF-8", "en_US"},
                                        {"POSIX", "en_US"},
                                        {"", "en_US"}}) {
    EXPECT_EQ(localeIdentifier(posix), expected) << posix;
  }
}

TEST(HostBundle, PropertyListsComeFromNamedFilesThenTheDirectory) {
  const test::TemporaryDirectory directory;
  auto write = [&](const char* name, const char* value) {
    std::ofstream(directory.file(name))
        << "<plist><dict><key>k</key><string>" << value << "</string></dict></plist>";
  };
  write("A.plist", "directory");
  write("other.plist", "named");
  const HostBundle bundle({.identifier = {},
                           .info = {{"CFBundleName", "Host"}},
                           .directory = directory.path(),
                           .propertyListFiles = {{"B", directory.file("other.plist")}}});
  EXPECT_EQ(bundle.propertyList("A"), (json::Object{{"k", "directory"}}));
  EXPECT_EQ(bundle.propertyList("B"), (json::Object{{"k", "named"}}));
  EXPECT_EQ(bundle.propertyList("None"), std::nullopt);
  EXPECT_EQ(HostBundle({}).propertyList("A"), std::nullopt);
  EXPECT_EQ(bundle.info("CFBundleName"), json::Value("Host"));
  EXPECT_TRUE(bundle.info("CFBundleVersion").isNull());
}

TEST(HostConsole, PrintsALinesTextAndTellsItsMessage) {
  struct Watcher : phone::PhoneObserver {
    void consoleLine(std::string_view level, std::string_view message) override {
      seen.append(level).append("|").append(message).append(";");
    }
    std::string seen;
  } watcher;
  std::string printed;
  const ConsoleLine lines[] = {{"INFO", "one", "[t] [INFO] one\n"}, {"WARN", "a\nb", "[t] [WARN] a\nb\n"}};
  const ConsoleSink sink = [&](std::span<const ConsoleLine> all) {
    for (const auto& line : all) printed += line.text;
  };
  for (const auto& each : {sink, ConsoleSink()}) HostConsole(each, watcher).print(lines);
  EXPECT_EQ(printed, "[t] [INFO] one\n[t] [WARN] a\nb\n");
  EXPECT_EQ(watcher.seen, "INFO|one;WARN|a\nb;INFO|one;WARN|a\nb;");
}

TEST(HostConsole, AReaderThatGoesAwayCostsTheHostNothing) {
  const auto host = [] {
    int ends[2];
    if (::pipe(ends) != 0 || ::close(ends[0]) != 0 || ::dup2(ends[1], STDOUT_FILENO) < 0) ::_exit(1);
    const ConsoleLine lines[] = {{"INFO", "one", "one\n"}};
    for (int i = 0; i < 2; ++i) printToStandardOutput(lines);
    (void)!::write(STDERR_FILENO, "alive", 5);
    (void)!::write(STDOUT_FILENO, "x", 1);  // the host's own: what it does about the signal is as it was
    ::_exit(2);
  };
  EXPECT_EXIT(host(), ::testing::KilledBySignal(SIGPIPE), "alive");
}

}  // namespace
}  // namespace orlan::linuxphone
