// The log under real threads: nothing here depends on which thread is faster.
#include <gtest/gtest.h>

#include <future>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "logging/RealThreads.hpp"
#include "orlan/logging/Logger.hpp"

namespace orlan {
namespace {

class StoppedClock final : public Clock {
 public:
  [[nodiscard]] TimePoint now() const override { return TimePoint(); }
  [[nodiscard]] std::chrono::seconds offsetFromUtc(TimePoint) const override { return {}; }
};

class CountingConsole final : public Console {
 public:
  void print(std::span<const ConsoleLine> lines) override { printed += lines.size(); }
  std::atomic<std::size_t> printed = 0;
};

/// Files in memory whose appends wait while the gate is shut.
class GatedFiles final : public FileSystem {
 public:
  [[nodiscard]] std::string cachesDirectory() const override { return "/caches"; }
  [[nodiscard]] bool exists(const std::string& path) const override {
    const std::lock_guard lock(mutex_);
    return files_.contains(path);
  }
  [[nodiscard]] Result<std::string> read(const std::string& path) const override {
    const std::lock_guard lock(mutex_);
    const auto file = files_.find(path);
    if (file == files_.end()) return missing();
    return file->second;
  }
  Result<void> writeAtomically(const std::string& path, std::string_view bytes) override {
    const std::lock_guard lock(mutex_);
    files_[path] = bytes;
    return {};
  }
  Result<void> append(const std::string& path, std::string_view bytes) override {
    std::unique_lock lock(mutex_);
    opened_.wait(lock, [this] { return open_; });
    ++appends;
    const auto file = files_.find(path);
    if (file == files_.end()) return missing();
    file->second += bytes;
    return {};
  }
  Result<void> remove(const std::string& path) override {
    const std::lock_guard lock(mutex_);
    files_.erase(path);
    return {};
  }

  void setOpen(bool open) {
    {
      const std::lock_guard lock(mutex_);
      open_ = open;
    }
    opened_.notify_all();
  }

  std::atomic<int> appends = 0;

 private:
  static Unexpected<Error> missing() { return Unexpected(Error{"test", 2, "missing"}); }

  mutable std::mutex mutex_;
  std::condition_variable opened_;
  bool open_ = true;
  std::map<std::string, std::string> files_;
};

struct LoggerThreads : ::testing::Test {
  StoppedClock clock;
  CountingConsole console;
  GatedFiles files;
  test::ThreadQueues queues;
  std::unique_ptr<Logger> logger = std::make_unique<Logger>(clock, console, files, queues);

  /// Ends the logger, which writes out what is pending.
  std::vector<std::string> linesAtEnd() {
    logger.reset();
    std::istringstream text(files.read("/caches/orlan-sdk.log").value_or("(no file)\n"));
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

  std::map<int, int> next;
  for (const auto& line : linesAtEnd()) {
    int thread = -1;
    int number = -1;
    ASSERT_EQ(std::sscanf(line.c_str(), "[1970-01-01T00:00:00Z] [INFO] %d %d", &thread, &number), 2) << line;
    EXPECT_EQ(number, next[thread]++) << line;
  }
  EXPECT_EQ(next.size(), kThreads);
  for (const auto& [thread, count] : next) EXPECT_EQ(count, kLines) << thread;
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

TEST_F(LoggerThreads, ClearWhileTheDiskIsBusyRemovesExactlyWhatWasWrittenBefore) {
  files.setOpen(false);
  logger->log("before");
  logger->clear();
  logger->log("after");
  logger->clear();
  files.setOpen(true);
  EXPECT_EQ(linesAtEnd(), std::vector<std::string>{"(no file)"});

  logger = std::make_unique<Logger>(clock, console, files, queues);
  logger->log("next launch");
  EXPECT_EQ(linesAtEnd(), std::vector<std::string>{"[1970-01-01T00:00:00Z] [INFO] next launch"});
}

TEST_F(LoggerThreads, FirstUseFromManyThreadsOpensOneLog) {
  std::promise<void> start;
  const auto started = start.get_future().share();
  std::vector<std::thread> writers;
  for (int i = 0; i < 8; ++i) {
    writers.emplace_back([this, started] {
      started.wait();
      logger->breadcrumb("x");
    });
  }
  start.set_value();
  for (auto& writer : writers) writer.join();
  EXPECT_EQ(linesAtEnd().size(), 8u);
}

}  // namespace
}  // namespace orlan
