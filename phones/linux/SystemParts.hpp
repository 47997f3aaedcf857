#pragma once

#include <functional>
#include <mutex>
#include <string_view>
#include <utility>

#include "orlan/platform/Console.hpp"
#include "orlan/platform/RandomSource.hpp"
#include "phones/common/PhoneObserver.hpp"

namespace orlan::linuxphone {

/// The kernel's random bits.
class SystemRandom final : public RandomSource {
 public:
  [[nodiscard]] std::uint64_t next() override;
};

/// Where printed lines go, as they are printed; one call at a time.
using ConsoleSink = std::function<void(std::string_view lines)>;

/// Writes all lines of a call to standard output at once, so that those of several processes do not mix. When
/// nobody reads it any more they are lost; no SIGPIPE is raised.
void printToStandardOutput(std::string_view lines);

class HostConsole final : public Console {
 public:
  HostConsole(ConsoleSink sink, phone::PhoneObserver& observer)
      : sink_(std::move(sink)), observer_(observer) {}

  void print(const ConsoleLines& lines) override;

 private:
  std::mutex mutex_;
  ConsoleSink sink_;  // may be empty: nothing is printed
  phone::PhoneObserver& observer_;
};

/// Where lines of the system log go; any thread, several at a time.
using SystemLogSink = std::function<void(std::string_view message)>;

/// Writes to the machine's log (syslog), priority "info".
void writeToSyslog(std::string_view message);

class HostSystemLog final : public SystemLog {
 public:
  HostSystemLog(SystemLogSink sink, phone::PhoneObserver& observer)
      : sink_(std::move(sink)), observer_(observer) {}

  void write(std::string_view message) override;

 private:
  const SystemLogSink sink_;  // may be empty
  phone::PhoneObserver& observer_;
};

}  // namespace orlan::linuxphone
