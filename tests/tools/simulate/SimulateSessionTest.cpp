#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tools/orlan/simulate/SimulateSession.hpp"

namespace orlan::simulate {
namespace {

namespace fs = std::filesystem;

class SimulateSession : public ::testing::Test {
 protected:
  void SetUp() override {
    folder =
        fs::path(::testing::TempDir()) /
        ("orlan-simulate-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    fs::remove_all(folder);
    fs::create_directories(folder);
    options.scenario =
        file("scenario.json", R"({"name": "two\nlines", "steps": [{"at": 0, "do": "start"}]})");
    options.transcript = (folder / "out.jsonl").string();
  }
  void TearDown() override { fs::remove_all(folder); }

  std::string file(const char* name, std::string_view text) {
    std::ofstream(folder / name) << text;
    return (folder / name).string();
  }
  std::string written() const {
    std::ifstream stream(options.transcript);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  int run() {
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    const int status = simulate(options);
    out = ::testing::internal::GetCapturedStdout();
    err = ::testing::internal::GetCapturedStderr();
    return status;
  }

  fs::path folder;
  SimulateOptions options;
  std::string out, err;
};

constexpr const char* endLine = "{\"at\":0.000,\"event\":\"end\",\"steps\":1}\n";

TEST_F(SimulateSession, WritesTheTranscriptAndSaysWhatHappened) {
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(out, "");
  EXPECT_TRUE(written().ends_with(endLine));
  EXPECT_EQ(err, "two\\nlines: 1 step in 0.000 s: 0 requests, 0 notifications, 0 fixes, 1 log line\n");
}

TEST_F(SimulateSession, WithoutAFileTheTranscriptGoesToStandardOutput) {
  options.transcript.clear();
  options.only = "request";
  options.quiet = true;
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(out, endLine);
  EXPECT_EQ(err, "");
}

TEST_F(SimulateSession, AReportIsWrittenWhereAskedFor) {
  options.report = (folder / "day.html").string();
  EXPECT_EQ(run(), 0);
  std::ifstream page(*options.report);
  const std::string html{std::istreambuf_iterator<char>(page), {}};
  EXPECT_NE(html.find("<h1>two\\nlines</h1>"), std::string::npos);
  EXPECT_TRUE(html.ends_with("</html>\n"));

  options.report = (folder / "none" / "day.html").string();
  file("out.jsonl", "old");
  EXPECT_EQ(run(), 1);
  EXPECT_NE(err.find("none/day.html: "), std::string::npos);
  EXPECT_EQ(written(), "old");
}

TEST_F(SimulateSession, AScenarioThatIsNotValidLeavesNothing) {
  file("out.jsonl", "old");
  options.scenario = file("bad\x1b.json", R"({"ste\u001bps": 1})");
  EXPECT_EQ(run(), 2);
  EXPECT_EQ(err, "orlan: " + (folder / R"(bad\u001b.json)").string() +
                     R"(: ste\u001bps: unknown key, did you mean "steps"?)"
                     "\n");
  EXPECT_EQ(written(), "old");
  options.scenario = (folder / "missing.json").string();
  EXPECT_EQ(run(), 2);
  options.scenario = folder.string();
  EXPECT_EQ(run(), 2);
}

TEST_F(SimulateSession, ANotificationThatNobodyScheduledIsNotValid) {
  options.scenario = file("tap.json", R"({"steps": [{"at": 0, "do": "sendTestNotification"},
    {"at": 1, "do": "tap", "delivered": 0}, {"at": 2, "do": "present", "delivered": 1}]})");
  EXPECT_EQ(run(), 2);
  EXPECT_EQ(err, "orlan: " + options.scenario +
                     ": steps[2].delivered: expected the number of a notification scheduled by then (0 to "
                     "0), found 1\n");
  EXPECT_FALSE(fs::exists(options.transcript));
}

TEST_F(SimulateSession, AWalkThatIsCutOffIsMentioned) {
  options.scenario = file("walk.json", R"({"steps": [{"at": 1, "do": "track", "speed": 10,
    "points": [[0, 0], [0, 0.001]]}]})");
  EXPECT_EQ(run(), 0);
  EXPECT_NE(err.find("ended at 1.000 s, before its walk did at 13.000 s"), std::string::npos) << err;
}

TEST_F(SimulateSession, EventsMustBeKnown) {
  options.only = "log,reqest";
  EXPECT_EQ(run(), 1);
  EXPECT_EQ(err, "orlan: --only: unknown event \"reqest\", did you mean \"request\"?\n");
  options.only = ",";
  EXPECT_EQ(run(), 1);
  EXPECT_FALSE(fs::exists(options.transcript));
}

TEST_F(SimulateSession, WhereNothingCanBeWrittenItSaysSo) {
  for (const std::string& path :
       {(folder / "no" / "out.jsonl").string(), folder.string(), std::string("/dev/full")}) {
    options.transcript = path;
    EXPECT_EQ(run(), 1) << path;
    EXPECT_TRUE(err.starts_with("orlan: cannot write " + path + ": ")) << err;
  }
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(SimulateSession, ALinkStaysALinkAndNoHalfFileStaysBehind) {
  file("target.jsonl", "old");
  fs::create_symlink("target.jsonl", folder / "out.jsonl");
  EXPECT_EQ(run(), 0);
  EXPECT_TRUE(fs::is_symlink(folder / "out.jsonl"));
  EXPECT_TRUE(written().ends_with(endLine));
  for (const auto& entry : fs::directory_iterator(folder)) {
    EXPECT_EQ(entry.path().string().find(".partial"), std::string::npos) << entry.path();
  }
}

}  // namespace
}  // namespace orlan::simulate
