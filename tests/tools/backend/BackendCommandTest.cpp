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

TEST(BackendCommand, WhatCannotBeUsedIsOneLineAndTwo) {
  struct Row {
    std::vector<std::string> words;
    const char* problem;
  };
  for (const auto& row : {
           Row{{"--campaigns", "/no/such/file"},
               "orlan backend: /no/such/file: cannot be read: No such file"},
           Row{{"--fault", "/get-config=slow"}, "orlan backend: fault \"/get-config=slow\": expected status"},
           Row{{"--answer", "/get-config"}, "orlan backend: answer \"/get-config\": there is no \"=\""},
           Row{{"--answer", "/config=x"},
               R"(answer "/config=x": no such endpoint "/config"; there are /api/dev)"},
           Row{{"--answer", "/get-config=/no/such"}, "orlan backend: /no/such: cannot be read"},
       }) {
    const auto outcome = run(row.words);
    EXPECT_EQ(outcome.status, 2) << row.problem;
    EXPECT_THAT(outcome.err, HasSubstr(row.problem));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_EQ(outcome.out, "") << row.problem;
  }
}

TEST(BackendCommand, WhatTheMachineRefusesIsOne) {
  DevBackend other({});
  const auto port = other.start();
  ASSERT_TRUE(port);
  const auto taken = run({"--port", std::to_string(*port)});
  EXPECT_EQ(taken.status, 1);
  EXPECT_THAT(taken.err, HasSubstr("port " + std::to_string(*port)));
  const auto record = run({"--record", "/no/such/record"});
  EXPECT_EQ(record.status, 1);
  EXPECT_THAT(record.err, HasSubstr("/no/such/record: cannot be written: No such file"));
}

}  // namespace
}  // namespace orlan::devbackend
