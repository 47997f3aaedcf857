#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "orlan/logging/Logger.hpp"

namespace orlan::bench {

/// A logger that does all its work for the caller, on a phone whose console and files swallow the lines. Its
/// queue runs nothing until `drain`, so that only the caller's side is timed.
class MuteLog {
 public:
  Logger& logger() { return logger_; }

  void drain() {
    if (const auto task = std::move(queues_.held)) task();
  }

 private:
  struct SystemClock final : Clock {
    [[nodiscard]] TimePoint now() const override {
      return std::chrono::time_point_cast<Duration>(std::chrono::system_clock::now());
    }
    [[nodiscard]] std::chrono::seconds offsetFromUtc(TimePoint) const override { return {}; }
  };

  struct MuteConsole final : Console {
    void print(const ConsoleLines&) override {}
  };

  struct NoFiles final : FileSystem {
    [[nodiscard]] std::string cachesDirectory() const override { return "/caches"; }
    [[nodiscard]] bool exists(const std::string&) const override { return true; }
    [[nodiscard]] Result<std::string> read(const std::string&) const override { return std::string(); }
    Result<void> writeAtomically(const std::string&, std::string_view) override { return {}; }
    Result<void> append(const std::string&, std::string_view) override { return {}; }
    Result<void> remove(const std::string&) override { return {}; }
  };

  struct HeldQueues final : Queues {
    struct Queue final : SerialQueue {
      explicit Queue(std::function<void()>& task) : held(task) {}
      void async(std::function<void()> task) override { held = std::move(task); }
      [[nodiscard]] bool isCurrent() const override { return true; }
      std::function<void()>& held;
    };
    [[nodiscard]] std::unique_ptr<SerialQueue> make(std::string_view) override {
      return std::make_unique<Queue>(held);
    }
    std::function<void()> held;
  };

  SystemClock clock_;
  MuteConsole console_;
  NoFiles files_;
  HeldQueues queues_;
  Logger logger_{clock_, console_, files_, queues_};
};

}  // namespace orlan::bench
