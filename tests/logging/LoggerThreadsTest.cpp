// The log under real threads: nothing here depends on which thread is faster.
#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "orlan/logging/Logger.hpp"
#include "phones/common/ThreadQueue.hpp"

namespace orlan {
namespace {

class StoppedClock final : public Clock {
 public:
  [[nodiscard]] TimePoint now() const override { return TimePoint(); }
  [[nodiscard]] std::chrono::seconds offsetFromUtc(TimePoint) const override { return {}; }
};

class CountingConsole final : public Console {
 public:
  void print(const ConsoleLines& lines) override { printed += lines.count; }
  std::atomic<std::size_t> printed = 0;
};

/// One file in memory whose appends wait while the gate is shut.
class GatedFile final : public FileSystem {
 public:
  [[nodiscard]] std::string cachesDirectory() const override { return "/caches"; }
  [[nodiscard]] bool exists(const std::string&) const override { return content.has_value(); }
  [[nodiscard]] Result<std::string> read(const std::string&) const override { return content.value_or(""); }
  Result<void> writeAtomically(const std::string&, std::string_view bytes) override {
    content = bytes;
    return {};
  }
  Result<void> append(const std::string&, std::string_view bytes) override {
    open.wait(false);
    ++appends;
    if (content) content->append(bytes);
    return {};
  }
  Result<void> remove(const std::string&) override {
    content.reset();
    return {};
  }

  void setOpen(bool isOpen) {
    open = isOpen;
    open.notify_all();
  }

  std::optional<std::string> content;  // of the queue, once the logger is open
  std::atomic<bool> open = true;
  int appends = 0;
};

struct LoggerThreads : ::testing::Test {
  StoppedClock clock;
  CountingConsole console;
  GatedFile files;
  phone::ThreadQueues queues;
  std::unique_ptr<Logger> logger = std::make_unique<Logger>(clock, console, files, queues);

  /// Ends the logger, which writes out what is pending.
  std::vector<std::string> linesAtEnd() {
    logger.reset();
    std::istringstream text(files.content.value_or("(no file)\n"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
  }
};

TEST_F(LoggerThreads, EveryLineOfEveryThreadReachesTheFileWholeAndInItsOrder) {
  constexpr int kThreads = 8;
  constexpr int kLines = 500;
  std::vector<std::thread> writers;
  for (int thread = 0; thread < kThreads; ++thread) {
    writers.emplace_back([this, thread] {
      for (int i = 0; i < kLines; ++i) logger->log(std::to_string(thread) + ' ' + std::to_string(i));
    });
  }
  for (auto& writer : writers) writer.join();

  std::vector<int> next(kThreads);
  for (const auto& line : linesAtEnd()) {
    int thread = -1;
    int number = -1;
    ASSERT_EQ(std::sscanf(line.c_str(), "[1970-01-01T00:00:00Z] [INFO] %d %d", &thread, &number), 2) << line;
    EXPECT_EQ(number, next.at(static_cast<std::size_t>(thread))++) << line;
  }
  EXPECT_EQ(next, std::vector<int>(kThreads, kLines));
  EXPECT_EQ(console.printed, kThreads * kLines);
}

TEST_F(LoggerThreads, CallersNeverWaitForTheDiskAndItIsOpenedOnceForAllThatGathered) {
  files.setOpen(false);
  for (int i = 0; i < 1000; ++i) logger->log("line");  // would hang here if a caller waited
  EXPECT_EQ(console.printed, 1000u);
  files.setOpen(true);
  EXPECT_EQ(linesAtEnd().size(), 1000u);
  EXPECT_LE(files.appends, 2);  // at most the batch at the gate and all the rest
}

}  // namespace
}  // namespace orlan
