#pragma once

#include <cstddef>
#include <string_view>

namespace orlan {

/// One line of the log on its way to standard output.
struct ConsoleLine {
  std::string_view level;    // "INFO", "WARN", "ERROR", "•"
  std::string_view message;  // may hold line breaks
  std::string_view text;     // the whole line as printed, with its final "\n"
};

/// What is printed at once: one line, whose message may hold line breaks, or several of one level, which hold
/// none. Several come by the thousand, so they are one text that only those who want lines take apart.
struct ConsoleLines {
  std::string_view level;
  std::string_view text;      // as printed, each line with its final "\n"
  std::size_t messageAt = 0;  // where in each line its message begins
  std::size_t count = 1;

  /// Calls `take` with each ConsoleLine.
  template <class Take>
  void forEach(Take&& take) const {
    for (std::string_view left = text; !left.empty();) {
      const std::string_view line = count == 1 ? left : left.substr(0, left.find('\n') + 1);
      take(ConsoleLine{level, line.substr(messageAt, line.size() - messageAt - 1), line});
      left.remove_prefix(line.size());
    }
  }
};

/// Standard output, as far as the host has one. Called on the thread that logs, any; lines of one call stay
/// together. Must not call back into the library.
class Console {
 public:
  virtual ~Console() = default;
  virtual void print(const ConsoleLines& lines) = 0;
};

/// The phone's system-wide log. Any thread.
class SystemLog {
 public:
  virtual ~SystemLog() = default;
  virtual void write(std::string_view message) = 0;  // placeholders already filled
};

}  // namespace orlan
