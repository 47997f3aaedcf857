#pragma once

#include <span>
#include <string_view>

namespace orlan {

/// One line of the log on its way to standard output.
struct ConsoleLine {
  std::string_view level;    // "INFO", "WARN", "ERROR", "•"
  std::string_view message;  // may hold line breaks
  std::string_view text;     // the whole line as printed, with its final "\n"
};

/// Standard output, as far as the host has one. Called on the thread that logs, any; lines of one call stay
/// together. Must not call back into the library.
class Console {
 public:
  virtual ~Console() = default;
  virtual void print(std::span<const ConsoleLine> lines) = 0;
};

/// The phone's system-wide log. Any thread.
class SystemLog {
 public:
  virtual ~SystemLog() = default;
  virtual void write(std::string_view message) = 0;  // placeholders already filled
};

}  // namespace orlan
