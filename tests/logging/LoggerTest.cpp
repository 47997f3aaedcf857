#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "orlan/logging/Breadcrumbs.hpp"
#include "orlan/logging/Logger.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan {
namespace {

using testing::ElementsAre;

constexpr char kFile[] = "orlan-sdk.log";

TimePoint at(int second) {
  using namespace std::chrono;
  return sys_days(2025y / January / 2) + 3h + 4min + std::chrono::seconds(second);
}

struct LoggerTest : ::testing::Test, phone::PhoneObserver {
  LoggerTest() {
    phone.observe(*this);
    launch();
  }

  void launch() {
    const auto parts = phone.platform();
    logger.emplace(parts.clock, parts.console, parts.files, parts.queues);
  }
  void relaunch() {
    logger.reset();
    phone.relaunch();
    launch();
  }

  /// What is in the file once all that was posted has run; nothing when there is none.
  std::optional<std::string> file() {
    world.settle();
    return phone.files().content(kFile);
  }

  void consoleLines(const ConsoleLines& lines) override {
    lines.forEach([this](const ConsoleLine& line) {
      printed.push_back(std::string(line.level).append("|").append(line.message));
    });
  }
  void fileWritten(std::string_view name, std::size_t size) override {
    printed.push_back("created " + std::string(name) + ' ' + std::to_string(size));
  }

  std::vector<std::string> printed;
  sim::World world{{.start = at(5)}};
  sim::SimulatedPhone phone{world};
  std::optional<Logger> logger;
};

TEST_F(LoggerTest, EachLevelHasItsTagAndMessagesStandUnchanged) {
  const std::string start = "[2025-01-02T03:04:05Z] [";
  const std::string raw("two\nlines\r\n\0 \x1B 100% {} \\n", 24);
  logger->log("");
  logger->warn("b");
  logger->error("c");
  logger->breadcrumb(raw);
  EXPECT_THAT(printed, ElementsAre("created orlan-sdk.log 0", "INFO|", "WARN|b", "ERROR|c", "•|" + raw));
  EXPECT_EQ(file(),
            start + "INFO] \n" + start + "WARN] b\n" + start + "ERROR] c\n" + start + "•] " + raw + "\n");
}

TEST_F(LoggerTest, BreadcrumbsByTheThousandAreTheLinesOfTheirMomentOneByOne) {
  std::vector<std::string> expectedLines{"created orlan-sdk.log 0"};
  std::string expectedText;
  const auto expect = [&](const std::string& message) {
    expectedLines.push_back("•|" + message);
    expectedText += "[2025-01-02T03:04:05Z] [•] " + message + "\n";
  };
  Breadcrumbs many(*logger);
  const auto ready = many.lines({"🔍 one", ""});
  for (const char* title : {"short", ""}) {
    for (int i = 0; i < 1000; ++i) {
      many.add(title, ready);
      for (const char* message : {title, "🔍 one", ""}) expect(message);
    }
    phone.clock().set(at(6));
    many.write();
  }
  EXPECT_EQ(printed, expectedLines);
  EXPECT_EQ(file(), expectedText);
}

TEST_F(LoggerTest, TimeIsThatOfTheCallInWholeSecondsWhereverTheClockJumps) {
  std::string expected;
  for (const auto& [microseconds, second] :
       {std::pair{0, "05"}, {999'999, "05"}, {1'000'000, "06"}, {-1, "04"}, {0, "05"}}) {
    phone.clock().set(at(5) + Duration(microseconds));
    logger->log("x");
    expected += "[2025-01-02T03:04:" + std::string(second) + "Z] [INFO] x\n";
  }
  EXPECT_EQ(file(), expected);
}

TEST_F(LoggerTest, BytesThatAreNoTextArePrintedButNotStored) {
  for (const char* message : {"before", "\xff broken", "after"}) logger->log(message);
  logger->log("\xc3");
  logger->log("\xa9");  // halves of one character, which do not make a line together
  EXPECT_EQ(printed.size(), 6u);
  EXPECT_EQ(file(), "[2025-01-02T03:04:05Z] [INFO] before\n[2025-01-02T03:04:05Z] [INFO] after\n");
}

TEST_F(LoggerTest, EveryOperationOpensTheLogAndConstructionDoesNot) {
  EXPECT_EQ(file(), std::nullopt);
  EXPECT_EQ(logger->logFileURL(), phone.platform().files.cachesDirectory() + "/orlan-sdk.log");
  EXPECT_THAT(printed, ElementsAre("created orlan-sdk.log 0"));
  EXPECT_EQ(file(), "");
}

TEST_F(LoggerTest, SecondLaunchContinuesTheFileAndAClearedOneStaysAwayUntilThen) {
  logger->log("first");
  (void)file();
  relaunch();
  logger->log("second");
  EXPECT_EQ(file(), "[2025-01-02T03:04:05Z] [INFO] first\n[2025-01-02T03:04:05Z] [INFO] second\n");
  logger->log("waits when it is cleared");
  logger->clear();
  EXPECT_NE(phone.files().content(kFile), std::nullopt);  // not inside the call
  logger->log("after");
  EXPECT_EQ(file(), std::nullopt);
  logger->log("printed only");
  EXPECT_EQ(file(), std::nullopt);
  EXPECT_EQ(printed.back(), "INFO|printed only");
  relaunch();
  logger->log("new");
  EXPECT_EQ(file(), "[2025-01-02T03:04:05Z] [INFO] new\n");
}

TEST_F(LoggerTest, DiskThatRefusesTheFileLeavesPrintingAlone) {
  phone.files().fail(sim::StorageFault::writes);
  logger->log("a");
  EXPECT_EQ(file(), std::nullopt);
  phone.files().fail(sim::StorageFault::none);
  logger->log("b");
  EXPECT_EQ(file(), std::nullopt);  // nobody creates it any more
  EXPECT_THAT(printed, ElementsAre("INFO|a", "INFO|b"));
}

TEST_F(LoggerTest, WhatFindsNoRoomBesideASlowDiskIsPrintedAndCounted) {
  const std::string megabyte(1024 * 1024, 'x');
  for (int i = 0; i < 18; ++i) logger->log(megabyte);  // meanwhile nothing is written
  EXPECT_EQ(printed.size(), 19u);
  (void)file();
  logger->log("later");
  const std::string text = file().value_or("");
  constexpr std::size_t start = 30;
  ASSERT_GT(text.size(), 16 * (start + megabyte.size() + 1));
  EXPECT_EQ(text.substr(16 * (start + megabyte.size() + 1)),
            "[2025-01-02T03:04:05Z] [WARN] 2 lines are missing here: the disk was too slow for them\n"
            "[2025-01-02T03:04:05Z] [INFO] later\n");
}

}  // namespace
}  // namespace orlan
