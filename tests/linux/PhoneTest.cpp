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
  const HttpRequest request{"GET", server.url(), {}, {}};
  const test::TemporaryDirectory home;
  std::string order;
  std::optional<std::string> identity;
  Subscription outer, inner;
  {
    LinuxPhone phone(quiet(home.path()));
    const Platform platform = phone.platform();
    identity = platform.device.vendorIdentifier();
    outer = platform.http.send(request, [&](const Result<HttpReply>& result) {
      EXPECT_EQ(result.error(), urlErrors::cancelled());
      inner = platform.http.send(request, [&](const Result<HttpReply>& last) {
        EXPECT_EQ(last.error(), urlErrors::cancelled());
        platform.main.async([&] {
          order += "posted by an answer to what an answer sent";
          platform.store.set("from the last task", true);  // everything is still there
        });
      });
    });
    phone.stop();
    phone.run();
    order += "run is over, ";
  }
  EXPECT_EQ(order, "run is over, posted by an answer to what an answer sent");
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
  config.wallClock = TimePoint(std::chrono::hours(1000));
  config.trouble = [&](const std::string& what) { said.push_back(what); };
  LinuxPhone phone(std::move(config));
  ASSERT_EQ(said.size(), 2U);  // the cache, the store
  for (const auto& line : said) EXPECT_TRUE(line.starts_with(home.file("file") + "/")) << line;
  const Platform platform = phone.platform();
  for (const char* key : {"kept", "removed"}) platform.store.set(key, 1);
  platform.store.remove("removed");
  EXPECT_EQ(platform.store.contents(), (json::Object{{"kept", 1}}));
  EXPECT_EQ(platform.device.vendorIdentifier(), std::nullopt);
  EXPECT_FALSE(platform.files.writeAtomically(platform.files.cachesDirectory() + "/x", "y"));
  EXPECT_EQ(std::chrono::floor<std::chrono::hours>(platform.clock.now()).time_since_epoch().count(), 1000);
}

struct Walker : phone::PhoneObserver {
  void fixes(std::span<const Location> batch) override {
    heard.push_back(batch.back().timestamp);
    if (const auto now = onUpdate) now();  // a copy: it may be replaced from inside
  }
  std::vector<TimePoint> heard;
  std::function<void()> onUpdate;
};

class TrackPlayerTest : public ::testing::Test {
 protected:
  TrackPlayerTest() {
    for (int i = 0; i < 4; ++i) track.fixes.push_back({{0, i * 1.0}, 5, TimePoint(std::chrono::minutes(i))});
  }
  bool runUntil(const std::function<bool()>& done) { return loop.runUntil(done, std::chrono::seconds(30)); }

  const ReplayTime time{1e5, {}};
  EventLoop loop{time};
  Walker walker;
  phone::LocationHub hub{loop, walker};
  TrackPlayer player{loop, time, hub};
  Track track;
  std::string finished;
};

TEST_F(TrackPlayerTest, AListenerMayStopItOrPlayAnother) {
  walker.onUpdate = [&] {
    walker.onUpdate = [&] { player.stop(); };
    player.play(track, [&] { finished = "second"; });
  };
  player.play(track, [&] { finished = "first"; });
  bool over = false;
  const auto later = loop.after(std::chrono::minutes(10), [&] { over = true; });
  ASSERT_TRUE(runUntil([&] { return over; }));
  EXPECT_EQ(player.delivered(), 1U);  // of the second, which its first fix stopped
  EXPECT_EQ(finished, "");

  player.play(Track{}, [&] { finished = "empty"; });
  EXPECT_TRUE(runUntil([&] { return !finished.empty(); }));
}

TEST_F(TrackPlayerTest, StandingStillCostsTheWalkNothingButTime) {
  walker.onUpdate = [&] {
    EXPECT_GE(time.wallNow(), walker.heard.back());  // never before its time
    if (walker.heard.size() == 2) player.standStill();
  };
  const TimePoint begun = time.wallNow();
  player.standStill();  // nothing is walked yet
  EXPECT_FALSE(player.isStanding());
  player.play(track, [&] { finished = "walk"; });
  ASSERT_TRUE(runUntil([&] { return player.isStanding(); }));
  bool anHourPassed = false;
  const auto hour = loop.after(std::chrono::hours(1), [&] { anHourPassed = true; });
  ASSERT_TRUE(runUntil([&] { return anHourPassed; }));
  EXPECT_EQ(walker.heard.size(), 2U);
  EXPECT_EQ(player.walked(), Duration(std::chrono::minutes(1)));

  player.walkOn();
  ASSERT_TRUE(runUntil([&] { return !finished.empty(); }));
  ASSERT_EQ(walker.heard.size(), 4U);
  EXPECT_GE(walker.heard[0], begun);  // the phone's clock, not the file's
  EXPECT_EQ(walker.heard[1] - walker.heard[0], std::chrono::minutes(1));
  EXPECT_GE(walker.heard[2] - walker.heard[1], std::chrono::minutes(61)) << "stamped with the time stood";
  EXPECT_EQ(walker.heard[3] - walker.heard[2], std::chrono::minutes(1));
}

TEST(Directories, FollowHomeOrTheUsersOwn) {
  const struct {
    const char *home, *user, *xdgCache, *xdgData;
    std::string cache, data;
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
  for (const char* name : {"A", "other"}) {
    std::ofstream(directory.file(std::string(name) + ".plist"))
        << "<plist><dict><key>k</key><string>" << name << "</string></dict></plist>";
  }
  BundleSettings settings;
  settings.directory = directory.path();
  settings.propertyListFiles = {{"B", directory.file("other.plist")}};
  const HostBundle bundle(settings);
  EXPECT_EQ(bundle.propertyList("A"), (json::Object{{"k", "A"}}));
  EXPECT_EQ(bundle.propertyList("B"), (json::Object{{"k", "other"}}));
  EXPECT_EQ(bundle.propertyList("None"), std::nullopt);
  EXPECT_EQ(HostBundle({}).propertyList("A"), std::nullopt);
}

TEST(HostConsole, AReaderThatGoesAwayCostsTheHostNothing) {
  const auto host = [] {
    int ends[2];
    if (::pipe(ends) != 0 || ::close(ends[0]) != 0 || ::dup2(ends[1], STDOUT_FILENO) < 0) ::_exit(1);
    for (int i = 0; i < 2; ++i) printToStandardOutput("one\n");
    (void)!::write(STDERR_FILENO, "alive", 5);
    (void)!::write(STDOUT_FILENO, "x", 1);  // the host's own: what it does about the signal is as it was
    ::_exit(2);
  };
  EXPECT_EXIT(host(), ::testing::KilledBySignal(SIGPIPE), "alive");
}

}  // namespace
}  // namespace orlan::linuxphone
