#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <csignal>

#include "tools/orlan/backend/BackendCommand.hpp"
#include "tools/orlan/backend/DevBackend.hpp"

namespace orlan::devbackend {
namespace {

using testing::HasSubstr;

struct Outcome {
  int status = -1;
  std::string out;
  std::string err;
};

/// The program with these words behind `backend`, asked to end before it begins: what starts at all ends at
/// once.
Outcome run(std::vector<std::string> words) {
  ::sigset_t ending;
  ::sigset_t former;
  ::sigemptyset(&ending);
  ::sigaddset(&ending, SIGTERM);
  ::pthread_sigmask(SIG_BLOCK, &ending, &former);
  ::pthread_kill(::pthread_self(), SIGTERM);

  CLI::App program;
  Outcome outcome;
  addBackendCommand(program, outcome.status);
  words.insert(words.begin(), "backend");
  std::reverse(words.begin(), words.end());  // as the parser wants them
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  program.parse(words);
  outcome.out = testing::internal::GetCapturedStdout();
  outcome.err = testing::internal::GetCapturedStderr();

  const timespec none{};
  ::sigtimedwait(&ending, nullptr, &none);  // still there when it never started
  ::pthread_sigmask(SIG_SETMASK, &former, nullptr);
  return outcome;
}

TEST(BackendCommand, ASignalEndsItCleanly) {
  const auto outcome = run({"--push", "--fault", "/get-config=cut", "--fault", "/api/segments=status:500*2"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("orlan backend listens on http://127.0.0.1:"));
  EXPECT_EQ(outcome.err, "");
  EXPECT_THAT(run({"--json"}).out,
              testing::MatchesRegex(R"(\{"event":"listening","url":"http://127.0.0.1:[0-9]+"\}
\{"event":"summary","requests":\[\]\}
)"));
}

TEST(BackendCommand, WhatCannotBeUsedIsOneLineAndAStatus) {
  DevBackend other({});
  const auto port = std::to_string(other.start().value());
  struct Row {
    std::vector<std::string> words;
    std::string problem;
    int status = 2;
  };
  for (const auto& row : {Row{{"--campaigns", "/no/such"}, "/no/such: cannot be read: No such file"},
                          Row{{"--campaigns", "/"}, "/: cannot be read: Is a directory"},
                          Row{{"--fault", "/get-config=slow"}, "fault \"/get-config=slow\": expected status"},
                          Row{{"--answer", "/get-config"}, "answer \"/get-config\": there is no \"=\""},
                          Row{{"--answer", "/get-config=/no/such"}, "/no/such: cannot be read"},
                          Row{{"--port", port}, "port " + port + ": taken", 1},
                          Row{{"--record", "/no/such"}, "/no/such: cannot be written: No such file", 1}}) {
    const auto outcome = run(row.words);
    EXPECT_EQ(outcome.status, row.status) << row.problem;
    EXPECT_THAT(outcome.err, testing::StartsWith("orlan backend: " + row.problem));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_EQ(outcome.out, "") << row.problem;
  }
}

}  // namespace
}  // namespace orlan::devbackend
