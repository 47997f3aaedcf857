#pragma once

#include <chrono>
#include <mutex>
#include <span>
#include <string>
#include <string_view>

#include "orlan/base/Lazy.hpp"
#include "orlan/platform/Clock.hpp"
#include "orlan/platform/Console.hpp"
#include "orlan/platform/FileSystem.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// The library's one diagnostic channel. Each message becomes one line,
/// "[2025-03-14T09:26:53Z] [INFO] message\n", printed at once on the caller's thread and appended in the
/// background to "orlan-sdk.log" in the caches directory. There is no level filter. Any thread may write;
/// lines of one thread reach the file in the order written. The caller never waits for disk, and no failure
/// is reported.
///
/// The first use of `shared` or of any operation opens the log: it creates the file when there is none.
class Logger {
 public:
  Logger(Clock& clock, Console& console, FileSystem& files, Queues& queues);
  ~Logger();
  Logger(const Logger&) = delete;
  Logger& operator=(const Logger&) = delete;

  /// The process's logger, for as long as the library is installed. Any thread.
  static Logger& shared();

  void log(std::string_view message);         // "INFO"
  void warn(std::string_view message);        // "WARN"
  void error(std::string_view message);       // "ERROR"
  void breadcrumb(std::string_view message);  // "•"

  /// Several breadcrumbs at one moment: as many `breadcrumb` calls, at the price of one.
  void breadcrumbs(std::span<const std::string_view> messages);

  /// Absolute path of the log file, whether or not it is there now.
  [[nodiscard]] std::string logFileURL();

  /// Deletes the file with exactly the lines written before this call. It stays away until the next start of
  /// the process; later lines are still printed.
  void clear();

 private:
  class File;
  void write(std::string_view level, std::span<const std::string_view> messages);
  std::string lineStart();

  Clock& clock_;
  Console& console_;

  // Formatting a date costs more than the rest of a line, and most lines share their second with the one
  // before.
  std::mutex mutex_;
  std::chrono::sys_seconds second_;  // guarded by mutex_
  std::string start_;                // guarded by mutex_: "[2025-03-14T09:26:53Z] [" of that second

  Lazy<File> file_;
};

}  // namespace orlan
