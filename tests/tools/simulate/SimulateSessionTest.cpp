#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "linux/TemporaryDirectory.hpp"
#include "tools/orlan/simulate/SimulateSession.hpp"

namespace orlan::simulate {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;

class SimulateSession : public testing::Test {
 protected:
  SimulateSession() {
    options.scenario =
        file("scenario.json", R"({"name": "two\nlines", "steps": [{"at": 0, "do": "start"}]})");
    options.transcript = in("out.jsonl");
  }

  std::string in(const std::string& name) const { return folder.file(name); }
  std::string file(const char* name, std::string_view text) const {
    std::ofstream(in(name)) << text;
    return in(name);
  }
  std::string written(const char* name) const {
    std::ifstream stream(in(name));
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  int run() {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int status = simulate(options);
    out = testing::internal::GetCapturedStdout();
    err = testing::internal::GetCapturedStderr();
    return status;
  }

  linuxphone::test::TemporaryDirectory folder;
  SimulateOptions options;
  std::string out, err;
};

constexpr const char* endLine = "{\"at\":0.000,\"event\":\"end\",\"steps\":1}\n";

TEST_F(SimulateSession, WritesTranscriptAndReportAndSaysWhatHappened) {
  file("target.jsonl", "old");
  fs::create_symlink("target.jsonl", options.transcript);
  options.report = in("day.html");
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(out, "");
  EXPECT_EQ(err, "two\\nlines: 1 step in 0.000 s: 0 requests, 0 notifications, 0 fixes, 1 log line\n");
  EXPECT_THAT(written("target.jsonl"), EndsWith(endLine));
  EXPECT_TRUE(fs::is_symlink(options.transcript)) << "a link stays one";
  EXPECT_THAT(written("day.html"), AllOf(HasSubstr("<h1>two\\nlines</h1>"), EndsWith("</html>\n")));
  for (const auto& entry : fs::directory_iterator(folder.path())) {
    EXPECT_THAT(entry.path().string(), Not(HasSubstr(".partial")));
  }
}

TEST_F(SimulateSession, WithoutAFileTheTranscriptGoesToStandardOutput) {
  options.transcript.clear();
  options.only = "request";
  options.quiet = true;
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(out, endLine);
  EXPECT_EQ(err, "");
}

TEST_F(SimulateSession, AWalkThatIsCutOffIsMentioned) {
  options.scenario = file("walk.json", R"({"steps": [{"at": 1, "do": "track", "speed": 10,
    "points": [[0, 0], [0, 0.001]]}]})");
  EXPECT_EQ(run(), 0);
  EXPECT_THAT(err, HasSubstr("ended at 1.000 s, before its walk did at 13.000 s"));
}

TEST_F(SimulateSession, WhatCannotBeUsedIsOneLineAndAStatusAndLeavesNothing) {
  const std::pair<std::function<void(SimulateOptions&)>, std::string> rows[] = {
      {[&](auto& o) { o.only = "log,reqest"; },
       "1 orlan: --only: unknown event \"reqest\", did you mean \"request\"?"},
      {[&](auto& o) { o.only = ","; }, "1 orlan: --only: expected the names of events"},
      {[&](auto& o) { o.scenario = file("bad\x1b.json", R"({"ste\u001bps": 1})"); },
       "2 orlan: " + in(R"(bad\u001b.json)") + R"(: ste\u001bps: unknown key, did you mean "steps"?)"},
      {[&](auto& o) { o.scenario = in("no.json"); }, "2 orlan: " + in("no.json") + ": No such file"},
      {[&](auto& o) { o.scenario = folder.path(); }, "2 orlan: " + folder.path() + ": Is a directory"},
      {[&](auto& o) {
         o.scenario = file("tap.json", R"({"steps": [{"at": 0, "do": "sendTestNotification"},
           {"at": 1, "do": "tap", "delivered": 0}, {"at": 2, "do": "present", "delivered": 1}]})");
       },
       "2 orlan: " + in("tap.json") +
           ": steps[2].delivered: expected the number of a notification scheduled by then (0 to 0), found 1"},
      {[&](auto& o) { o.transcript = in("no/out.jsonl"); }, "1 orlan: cannot write " + in("no/out.jsonl: ")},
      {[&](auto& o) { o.transcript = folder.path(); }, "1 orlan: cannot write " + folder.path() + ": "},
      {[&](auto& o) { o.transcript = "/dev/full"; }, "1 orlan: cannot write /dev/full: "},
      {[&](auto& o) { o.report = in("no/day.html"); }, "1 orlan: cannot write " + in("no/day.html: ")},
  };
  const SimulateOptions fine = options;
  for (const auto& [spoil, said] : rows) {
    options = fine;
    spoil(options);
    file("out.jsonl", "old");
    const int status = run();
    EXPECT_THAT(std::to_string(status) + " " + err, StartsWith(said));
    EXPECT_EQ(err.find('\n'), err.size() - 1) << "one line";
    EXPECT_EQ(written("out.jsonl"), "old") << said;
  }
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

}  // namespace
}  // namespace orlan::simulate
