#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "linux/TemporaryDirectory.hpp"
#include "orlan/base/json.hpp"
#include "tools/orlan/run/Addresses.hpp"
#include "tools/orlan/run/RunSession.hpp"

namespace orlan::run {
namespace {

using testing::HasSubstr;
namespace fs = std::filesystem;

constexpr std::string_view campaigns = R"({"geoCampaign":[{"campaignName":"Harbour","campaignId":7,"type":"g",
"locations":[70],"active":"1","testIds":"","segmentationTags":"","locationsArray":{"locationId":70,"_id":"l","geofence":[
{"position":0,"latitude":"51.001","longitude":"-1.001","_id":"a"},
{"position":1,"latitude":"51.001","longitude":"-0.999","_id":"b"},
{"position":2,"latitude":"51.003","longitude":"-0.999","_id":"c"},
{"position":3,"latitude":"51.003","longitude":"-1.001","_id":"d"}]},
"notificationsArray":[{"id":1,"campaignId":[7],"headline":"Ahoy","body":"Fish\u001b[31m today","type":"n","media":[],
"questions":[{"id":3,"question":"Fresh?","question_type":"BOOLEAN","has_choices":false,"position":0,"choices":[]}],
"cta":[{"url":"https://fish.example","label":"Buy","_id":"c"}],"segmentationTags":"","testIds":"","start":"","end":"",
"activation":"ON_ENTER"}]}],
"pushCampaign":[]})";

class Run : public testing::Test {
 protected:
  std::string file(const std::string& name, std::string_view content) const {
    const std::string path = directory_.path() + "/" + name;
    std::ofstream(path) << content;
    return path;
  }

  /// Northwards through the harbour, one fix a second, about 22 metres each.
  std::string walk(int fixes) const {
    std::string gpx = "<gpx version=\"1.1\"><trk><trkseg>";
    for (int i = 0; i < fixes; ++i) {
      gpx += "<trkpt lat=\"" + std::to_string(51.0 + 0.0002 * i) +
             "\" lon=\"-1.0\"><time>2020-05-01T10:" + (i / 60 < 10 ? "0" : "") + std::to_string(i / 60) +
             ":" + (i % 60 < 10 ? "0" : "") + std::to_string(i % 60) + "Z</time></trkpt>";
    }
    return file("walk.gpx", gpx + "</trkseg></trk></gpx>");
  }

  RunOptions options(int fixes) const {
    RunOptions options;
    options.track = walk(fixes);
    options.campaigns = file("campaigns.json", campaigns);
    options.home = home();
    options.speed = 100;
    options.json = true;
    return options;
  }

  std::string home() const { return directory_.path() + "/home"; }

  /// Plays and gives the JSON lines that were printed.
  std::vector<json::Value> play(const RunOptions& options, int expectedStatus = 0) {
    testing::internal::CaptureStdout();
    const int status = runSession(options);
    const std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(status, expectedStatus) << out;
    std::vector<json::Value> lines;
    std::size_t begin = 0;
    for (std::size_t end; (end = out.find('\n', begin)) != std::string::npos; begin = end + 1) {
      auto line = json::parse(std::string_view(out).substr(begin, end - begin));
      EXPECT_TRUE(line) << out;
      if (line) lines.push_back(std::move(line).value());
    }
    return lines;
  }

  static json::Value member(const json::Value& line, std::string_view key) {
    const json::Value* found = line.object() ? line.object()->find(key) : nullptr;
    return found ? *found : json::Value();
  }

  static std::vector<std::string> events(const std::vector<json::Value>& lines, std::string_view only) {
    std::vector<std::string> found;
    for (const json::Value& line : lines) {
      const std::string event = *member(line, "event").string();
      if (only.find(event) != std::string_view::npos) found.push_back(event);
    }
    return found;
  }

  linuxphone::test::TemporaryDirectory directory_;
};

TEST_F(Run, AWalkThroughACampaignShowsItsNotificationAndLeavesAReport) {
  RunOptions given = options(25);
  given.report = directory_.path() + "/report.html";
  const auto lines = play(given);
  EXPECT_EQ(events(lines, "entry exit notification end summary"),
            (std::vector<std::string>{"entry", "notification", "exit", "end", "summary"}));
  const json::Value summary = lines.back();
  EXPECT_EQ(member(summary, "fixes"), json::Value(25));
  EXPECT_EQ(member(member(summary, "requests"), "POST /api/device-registerd/create"),
            json::Value(json::Object{{"200", 1}}));
  EXPECT_TRUE(fs::exists(*member(summary, "log").string()));
  EXPECT_GT(fs::file_size(*given.report), 1000u);
}

TEST_F(Run, ASecondRunContinuesFromTheFirst) {
  const auto first = play(options(3));
  const auto second = play(options(3));
  EXPECT_EQ(member(member(second.back(), "requests"), "POST /api/device-registerd/create"), json::Value())
      << "registered once";
  EXPECT_GT(*member(second.front(), "time").string(), *member(first.back(), "time").string())
      << "the clock goes on";
}

TEST_F(Run, InTheBackgroundTheOtherMonitorReacts) {
  const auto monitors = [](const std::vector<json::Value>& lines) {
    std::vector<std::string> found;
    for (const json::Value& line : lines) {
      const std::string event = *member(line, "event").string();
      if (event == "entry" || event == "exit")
        found.push_back(event + " " + *member(line, "monitor").string());
    }
    return found;
  };
  RunOptions launchedThere = options(40);
  launchedThere.background = true;
  EXPECT_EQ(monitors(play(launchedThere)), (std::vector<std::string>{"entry background", "exit background"}));

  RunOptions sentThere = options(40);
  sentThere.home = home() + "2";
  sentThere.script = file("day.txt", "0:00 background\n0:10 front\n0:12 stand\n0:12 walk\nend background\n");
  const auto lines = play(sentThere);
  EXPECT_EQ(monitors(lines),
            (std::vector<std::string>{"entry background", "entry foreground", "exit foreground"}));
  EXPECT_EQ(member(lines.back(), "fixes"), json::Value(40));
}

TEST_F(Run, ATapShowsTheDetailsAndItsSurveyIsSent) {
  RunOptions given = options(25);
  given.script = file("day.txt",
                      "0:00 tap 1\nend background\nend tap last\nend link\nend media\nend answer maybe\n"
                      "end answer yes\nend answer more\n");
  const auto lines = play(given);
  std::vector<std::string> told;
  for (const json::Value& line : lines) {
    const std::string event = *member(line, "event").string();
    const json::Value text = member(line, event == "details" ? "headline" : "text");
    const bool ofInterest =
        std::string_view("tapped details question host answer survey").find(event) != std::string_view::npos;
    if (ofInterest) told.push_back(event + " " + *text.string());
  }
  EXPECT_EQ(told,
            (std::vector<std::string>{"host no notification #1 has come up", "tapped #1 Ahoy", "details Ahoy",
                                      "question 1/1 Fresh? (yes or no)", "host opens https://fish.example",
                                      "host there are no media to open", "host that is no answer: yes or no",
                                      "answer yes", "host no question is open", "survey sent: thank you"}));
  EXPECT_EQ(member(member(lines.back(), "requests"), "POST /api/survey-response"),
            json::Value(json::Object{{"200", 1}}));
}

TEST_F(Run, TextOfACampaignIsShownToAPersonAndNotObeyedByTheTerminal) {
  RunOptions given = options(8);
  given.json = false;
  testing::internal::CaptureStdout();
  EXPECT_EQ(runSession(given), 0);
  const std::string out = testing::internal::GetCapturedStdout();
  EXPECT_THAT(out, HasSubstr("Ahoy"));
  EXPECT_THAT(out, HasSubstr("Fish\\u001b[31m today"));
  EXPECT_EQ(out.find('\x1b'), std::string::npos);
}

TEST_F(Run, AnInterruptEndsItCleanlyWithinTwoSeconds) {
  RunOptions given = options(600);
  given.speed = 1;
  const std::string cache = home() + "/cache/orlan-geofences.json";
  std::chrono::steady_clock::time_point interrupted;
  std::thread person([&] {
    for (int i = 0; i < 1000 && !fs::exists(cache); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    interrupted = std::chrono::steady_clock::now();
    kill(getpid(), SIGINT);
  });
  const auto lines = play(given);
  const auto ended = std::chrono::steady_clock::now();
  person.join();
  EXPECT_LT(ended - interrupted, std::chrono::seconds(2));
  EXPECT_EQ(*member(lines.back(), "event").string(), "summary");
  EXPECT_EQ(member(play(options(3)).back(), "requests").object()->find("POST /api/device-registerd/create"),
            nullptr)
      << "the registration was kept";
}

TEST_F(Run, AnInputThatCannotBeUsedIsOneLineAndStartsNothing) {
  struct Row {
    std::string name;
    std::function<void(RunOptions&)> spoil;
    std::string expected;
  };
  const std::string directory = directory_.path();
  const Row rows[] = {
      {"track missing", [&](RunOptions& o) { o.track = directory + "/none.gpx"; }, "none.gpx"},
      {"track empty", [&](RunOptions& o) { o.track = file("empty.gpx", ""); }, "empty.gpx"},
      {"track malformed", [&](RunOptions& o) { o.track = file("bad.gpx", "<gpx><trk>"); }, "bad.gpx: line 1"},
      {"campaigns missing", [&](RunOptions& o) { o.campaigns = directory + "/none.json"; }, "none.json"},
      {"campaigns empty", [&](RunOptions& o) { o.campaigns = file("empty.json", ""); },
       "empty.json: is empty"},
      {"campaigns incomplete",
       [&](RunOptions& o) { o.campaigns = file("half.json", R"({"geoCampaign":[{}]})"); },
       "half.json: geoCampaign[0].campaignName: missing"},
      {"config malformed", [&](RunOptions& o) { o.config = file("bad.plist", "<plist><dict>"); },
       "bad.plist"},
      {"script malformed", [&](RunOptions& o) { o.script = file("bad.txt", "0:10 sleep"); },
       "bad.txt: line 1: unknown command"},
      {"report nowhere", [&](RunOptions& o) { o.report = directory + "/no/report.html"; },
       "no/report.html: No such file"},
      {"backend no URL", [&](RunOptions& o) { o.campaigns.reset(), o.backend = "nonsense"; }, "--backend"},
      {"control characters", [&](RunOptions& o) { o.track = directory + "/\x1b[31m"; }, "\\u001b[31m"}};
  for (const auto& [name, spoil, expected] : rows) {
    RunOptions given = options(3);
    spoil(given);
    testing::internal::CaptureStderr();
    EXPECT_EQ(runSession(given), 2) << name;
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_THAT(said, HasSubstr(expected)) << name;
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << name << ": " << said;
    EXPECT_FALSE(fs::exists(home())) << name;
  }
}

TEST(Addresses, EachFamilyGetsTheShapeOfItsEnvironment) {
  struct Row {
    std::string name;
    Config::Environment environment;
    std::optional<std::string> backend, platform, transmission;
    std::string expectedPlatform, expectedTransmission;
  };
  using enum Config::Environment;
  const std::string own = "http://127.0.0.1:9";
  for (const auto& row :
       {Row{"own", staging, {}, {}, {}, own, own + "/api"},
        Row{"own, nightly", nightly, {}, {}, {}, own, own + "/api/"},
        Row{"own, production", production, {}, {}, {}, own, own},
        Row{"both", staging, "https://a.example/", {}, {}, "https://a.example", "https://a.example/api"},
        Row{"apart",
            staging,
            {},
            "https://p.example",
            "https://t.example/api",
            "https://p.example",
            "https://t.example/api"}}) {
    RunOptions options;
    options.environment = row.environment;
    options.backend = row.backend;
    options.platformUrl = row.platform;
    options.transmissionUrl = row.transmission;
    const auto urls = addresses(options, own);
    ASSERT_TRUE(urls) << row.name << ": " << urls.error().description;
    EXPECT_EQ(urls->platformUrl(row.environment), row.expectedPlatform) << row.name;
    EXPECT_EQ(urls->transmissionUrl(row.environment), row.expectedTransmission) << row.name;
  }
}

}  // namespace
}  // namespace orlan::run
