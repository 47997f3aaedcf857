#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "linux/TemporaryDirectory.hpp"
#include "orlan/base/json.hpp"
#include "tools/orlan/run/Addresses.hpp"
#include "tools/orlan/run/RunSession.hpp"
#include "tools/run/Terminal.hpp"

namespace orlan::run {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;

constexpr std::string_view campaigns = R"({"geoCampaign":[{"campaignName":"Harbour","campaignId":7,"type":"g",
"locations":[70],"active":"1","testIds":"","segmentationTags":"","locationsArray":{"locationId":70,"_id":"l","geofence":[
{"position":0,"latitude":"51.001","longitude":"-1.001","_id":"a"},
{"position":1,"latitude":"51.001","longitude":"-0.999","_id":"b"},
{"position":2,"latitude":"51.003","longitude":"-0.999","_id":"c"},
{"position":3,"latitude":"51.003","longitude":"-1.001","_id":"d"}]},
"notificationsArray":[{"id":1,"campaignId":[7],"headline":"Ahoy","body":"Fish\u001b[31m today\r\nand \u009b31m tomorrow","type":"n","media":[],
"questions":[{"id":4,"question":"Again?","question_type":"RATING","has_choices":false,"position":1,"choices":[]},
{"id":3,"question":"Fresh?","question_type":"BOOLEAN","has_choices":false,"position":0,"choices":[]}],
"cta":[{"url":"https://fish.example","label":"Buy","_id":"c"}],"segmentationTags":"","testIds":"","start":"","end":"",
"activation":"ON_ENTER"}]}],
"pushCampaign":[]})";

class Run : public testing::Test {
 protected:
  std::string file(const std::string& name, std::string_view content) const {
    std::ofstream(directory_.file(name)) << content;
    return directory_.file(name);
  }

  /// Northwards through the harbour, one fix a second, about 22 metres each.
  std::string walk(int fixes) const {
    std::string gpx = "<gpx version=\"1.1\"><trk><trkseg>";
    for (int i = 0; i < fixes; ++i) {
      gpx += "<trkpt lat=\"" + std::to_string(51.0 + 0.0002 * i) + "\" lon=\"-1.0\"/>";
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

  std::string script(const std::string& steps) const {
    return file("script.json", "{\"steps\": [" + steps + "]}");
  }

  std::string home() const { return directory_.file("home"); }

  /// Plays and gives what was printed, all of it JSON lines.
  static std::string play(const RunOptions& options) {
    testing::internal::CaptureStdout();
    const int status = runSession(options);
    std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(status, 0) << out;
    return out;
  }

  /// The events of these kinds, each with what says most about it.
  static std::vector<std::string> told(const std::string& out, std::string_view kinds) {
    std::vector<std::string> found;
    std::istringstream lines(out);
    for (std::string line; std::getline(lines, line);) {
      const auto value = json::parse(line);
      if (!value) return {"no JSON: " + line};
      const auto text = [&](std::string_view key) {
        const json::Value* member = value->object()->find(key);
        return member != nullptr && member->string() != nullptr ? *member->string() : std::string();
      };
      if (kinds.find(text("event")) == std::string_view::npos) continue;
      found.push_back(text("event") + " " + text("monitor") + text("text"));
    }
    return found;
  }

  linuxphone::test::TemporaryDirectory directory_;
};

TEST_F(Run, AWalkThroughACampaignShowsItsNotificationAndASecondOneGoesOnFromThere) {
  RunOptions given = options(25);
  given.report = directory_.file("report.html");
  const std::string first = play(given);
  EXPECT_THAT(told(first, "entry exit notification end"),
              ElementsAre("entry foreground", "notification ", "exit foreground", "end walked to the end"));
  EXPECT_THAT(first, AllOf(HasSubstr(R"("event":"summary","fixes":25)"),
                           HasSubstr(R"("POST /api/device-registerd/create":{"200":1})"),
                           HasSubstr(R"("log":")" + home() + "/cache/orlan-sdk.log\"")));
  EXPECT_GT(fs::file_size(*given.report), 1000u);

  const std::string second = play(options(3));
  EXPECT_THAT(second, Not(HasSubstr("device-registerd/create"))) << "registered once";
  EXPECT_GT(second.substr(0, 30), first.substr(first.rfind("{\"time"), 30)) << "the clock goes on";
}

TEST_F(Run, LaunchedInTheBackgroundTheOtherMonitorReacts) {
  RunOptions given = options(40);
  given.background = true;
  EXPECT_THAT(told(play(given), "entry exit"), ElementsAre("entry background", "exit background"));
}

TEST_F(Run, AScriptGoesOnBehindTheWalk) {
  RunOptions given = options(25);
  given.script = script(R"({"at": 0, "do": "tap", "delivered": 0},
      {"at": 30, "do": "locationAuthorization", "to": 2},
      {"at": 31, "do": "application", "to": "background"},
      {"at": 32, "do": "tap", "delivered": 0},
      {"at": 33, "do": "trackCTAEngagement", "notificationID": 1, "locationID": 70},
      {"at": 34, "do": "submitSurveyResponse", "notificationId": "1", "locationId": "70", "answers": []},
      {"at": 35, "do": "submitSurveyResponse", "notificationId": "1", "locationId": "70",
       "answers": [{"question_id": 3, "type": "BOOLEAN", "value": "yes"}]})");
  const std::string out = play(given);
  EXPECT_THAT(told(out, "script tapped details question host"),
              ElementsAre("script tap", "host no notification #1 has come up", "script locationAuthorization",
                          "script application", "script tap", "tapped #1 Ahoy", "details ",
                          "question 1/2 Fresh? (yes or no)", "script trackCTAEngagement",
                          "script submitSurveyResponse", StartsWith("script submitSurveyResponse: "),
                          "script submitSurveyResponse", "script submitSurveyResponse: true"));
  EXPECT_THAT(out, HasSubstr(R"("POST /api/survey-response":{"200":1})"));
}

TEST_F(Run, TextOfACampaignIsShownToAPersonAndNotObeyedByTheTerminal) {
  RunOptions given = options(8);
  given.json = false;
  given.showLog = true;
  testing::internal::CaptureStdout();
  EXPECT_EQ(runSession(given), 0);
  const std::string out = testing::internal::GetCapturedStdout();
  EXPECT_THAT(
      out, HasSubstr("#1 Ahoy\n            Fish\\u001b[31m today\\r\n            and \\u009b31m tomorrow\n"));
  EXPECT_THAT(out, HasSubstr("\nINFO  "));
  EXPECT_EQ(out.find_first_of("\x1b\r"), std::string::npos);
  EXPECT_EQ(out.find("\u009b"), std::string::npos);
}

TEST_F(Run, KeysTapANotificationAnswerItsSurveyOpenItsLinkAndEndItAll) {
  RunOptions given = options(40);
  given.json = false;
  given.speed = 20;
  test::Terminal terminal([&] { return runSession(given); });
  terminal.converse("#1 Ahoy", "1\n");
  terminal.converse("1/2 Fresh? (yes or no)", "maybe\n");
  terminal.converse("that is no answer: yes or no", "yes\n");
  terminal.converse("2/2 Again? (1 to 5)", "5\n");
  terminal.converse("sent: thank you", "l");
  terminal.converse("opens https://fish.example", "m");
  terminal.converse("there are no media to open", "\x03");  // Ctrl-C
  terminal.converse("stopped", "");
  EXPECT_EQ(terminal.wait(), 0);
}

TEST_F(Run, EndsInOrderWhenNobodyReadsOn) {
  RunOptions given = options(600);
  given.speed = 1;
  given.report = directory_.file("report.html");
  signal(SIGPIPE, SIG_IGN);  // as the program does
  std::fflush(stdout);
  const int kept = dup(STDOUT_FILENO);
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  dup2(ends[1], STDOUT_FILENO);
  close(ends[0]);
  close(ends[1]);
  EXPECT_EQ(runSession(given), 0);
  dup2(kept, STDOUT_FILENO);
  close(kept);
  clearerr(stdout);
  EXPECT_GT(fs::file_size(*given.report), 1000u);
}

TEST_F(Run, AnInputThatCannotBeUsedIsOneLineAndStartsNothing) {
  const std::pair<std::function<void(RunOptions&)>, std::string> rows[] = {
      {[&](RunOptions& o) { o.track = file("bad.gpx", "<gpx><trk>"); }, "bad.gpx: line 1"},
      {[&](RunOptions& o) { o.campaigns = file("half.json", R"({"geoCampaign":[{}]})"); },
       "half.json: geoCampaign[0].campaignName: missing"},
      {[&](RunOptions& o) { o.config = file("bad.plist", "<plist><dict>"); }, "bad.plist"},
      {[&](RunOptions& o) { o.script = script(R"({"at": 1, "do": "relaunch"})"); },
       "script.json: steps[0].do: a person cannot do \"relaunch\""},
      {[&](RunOptions& o) { o.script = file("script.json", R"({"device": {}, "steps": []})"); },
       "script.json: device: unknown key"},
      {[&](RunOptions& o) { o.report = directory_.file("no/report.html"); }, "no/report.html: No such file"},
      {[&](RunOptions& o) { o.campaigns.reset(), o.backend = "nonsense"; }, "--backend"},
      {[&](RunOptions& o) { o.track = directory_.file("\x1b[31m"); }, "\\u001b[31m"}};
  for (const auto& [spoil, expected] : rows) {
    RunOptions given = options(3);
    spoil(given);
    testing::internal::CaptureStderr();
    EXPECT_EQ(runSession(given), 2) << expected;
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_THAT(said, HasSubstr(expected));
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    EXPECT_FALSE(fs::exists(home())) << expected;
  }
}

TEST(Addresses, EachFamilyGetsTheShapeOfItsEnvironment) {
  using enum Config::Environment;
  const struct {
    Config::Environment environment;
    std::optional<std::string> backend, platform, transmission;
    std::string expected;
  } rows[] = {
      {staging, {}, {}, {}, "http://127.0.0.1:9 http://127.0.0.1:9/api"},
      {nightly, {}, {}, {}, "http://127.0.0.1:9 http://127.0.0.1:9/api/"},
      {production, "https://a.example/", {}, {}, "https://a.example https://a.example"},
      {staging, {}, "https://p.example", "https://t.example/api", "https://p.example https://t.example/api"},
  };
  for (const auto& row : rows) {
    RunOptions options;
    options.environment = row.environment;
    options.backend = row.backend;
    options.platformUrl = row.platform;
    options.transmissionUrl = row.transmission;
    const auto urls = addresses(options, "http://127.0.0.1:9");
    ASSERT_TRUE(urls) << urls.error().description;
    EXPECT_EQ(urls->platformUrl(row.environment) + " " + urls->transmissionUrl(row.environment),
              row.expected);
  }
}

}  // namespace
}  // namespace orlan::run
