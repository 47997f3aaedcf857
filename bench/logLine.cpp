// What a burst of log lines costs the thread that writes them, each logger with a file and a thread of its
// own that sleeps when the burst begins.
#include <spdlog/async.h>
#include <spdlog/sinks/basic_file_sink.h>

#include <algorithm>
#include <chrono>
#include <future>
#include <string_view>
#include <thread>

#include "bench/Timing.hpp"
#include "bench/Workshop.hpp"
#include "bench/rows.hpp"
#include "orlan/logging/Logger.hpp"
#include "phones/common/PhoneObserver.hpp"
#include "phones/common/ThreadQueue.hpp"
#include "phones/linux/DiskFiles.hpp"

namespace orlan::bench {
namespace {

constexpr std::string_view line = "  - Consensus: inside=false, confidence=0.95, method=outside_polygon";

struct MuteConsole final : Console {
  void print(const ConsoleLines&) override {}
};

struct SystemClock final : Clock {
  [[nodiscard]] TimePoint now() const override {
    return std::chrono::time_point_cast<Duration>(std::chrono::system_clock::now());
  }
  [[nodiscard]] std::chrono::seconds offsetFromUtc(TimePoint) const override { return {}; }
};

/// Threads whose one queue can be waited for.
struct OneQueue final : Queues {
  [[nodiscard]] std::unique_ptr<SerialQueue> make(std::string_view label) override {
    auto made = std::make_unique<phone::ThreadQueue>(label);
    queue = made.get();
    return made;
  }
  void drain() {
    std::promise<void> done;
    queue->async([&] { done.set_value(); });
    done.get_future().wait();
  }
  SerialQueue* queue = nullptr;
};

class Ours {
 public:
  void write() { logger_.breadcrumb(line); }
  void drain() { queues_.drain(); }

 private:
  Workshop workshop_;
  phone::PhoneObserver nobody_;
  linuxphone::DiskFiles files_{workshop_.directory(), nobody_};
  SystemClock clock_;
  MuteConsole console_;
  OneQueue queues_;
  Logger logger_{clock_, console_, files_, queues_};
};

class Spdlog {
 public:
  Spdlog() { logger_.set_pattern("[%Y-%m-%dT%H:%M:%SZ] [%l] %v", spdlog::pattern_time_type::utc); }
  void write() { logger_.info(line); }
  void drain() {
    logger_.flush();
    while (threads_->queue_size() > 0) std::this_thread::yield();
  }

 private:
  Workshop workshop_;
  std::shared_ptr<spdlog::details::thread_pool> threads_ =
      std::make_shared<spdlog::details::thread_pool>(spdlog::details::default_async_q_size * 2, 1);
  std::shared_ptr<spdlog::async_logger> shared_ = std::make_shared<spdlog::async_logger>(
      "bench", std::make_shared<spdlog::sinks::basic_file_sink_mt>(workshop_.path("log")), threads_);
  spdlog::async_logger& logger_ = *shared_;
};

double wallTime() {
  return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

template <class Log>
double burst(Log& log, std::size_t lines, double (*now)()) {
  constexpr std::size_t linesOfASample = 7'000;
  constexpr std::size_t mostBursts = 200;
  const std::size_t bursts = std::min(mostBursts, linesOfASample / lines);
  std::vector<double> times;
  for (std::size_t i = 0; i < bursts; ++i) {
    const double clock = now();
    const double begin = now();
    for (std::size_t written = 0; written < lines; ++written) log.write();
    times.push_back(now() - begin - (begin - clock));  // without what the clock itself takes
    log.drain();
    std::this_thread::sleep_for(std::chrono::microseconds(100));
  }
  return median(std::move(times));
}

}  // namespace

void logLine(Table& table) {
  Ours ours;
  Spdlog spdlog;
  const auto measure = [&](const char* work, double (*now)()) {
    Row& row = table.emplace_back(Row{work, "lines", Unit::nanoseconds, {}});
    for (const std::size_t lines : {1, 7, 70, 700, 7'000}) {
      row.measure(static_cast<double>(lines), {{"ours", [&] { return burst(ours, lines, now); }},
                                               {"spdlog", [&] { return burst(spdlog, lines, now); }}});
    }
  };
  measure("A burst of log lines, work of the caller", threadTime);
  measure("A burst of log lines, until the caller goes on", wallTime);
}

}  // namespace orlan::bench
