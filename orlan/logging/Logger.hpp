#pragma once

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
/// While the disk is slower than the lines, 16 MB of them wait in memory. What comes then is printed but does
/// not reach the file, until those that wait have been written; a line in its place ("WARN") says how many
/// are missing.
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

  /// Absolute path of the log file, whether or not it is there now.
  [[nodiscard]] std::string logFileURL();

  /// Deletes the file with exactly the lines written before this call. It stays away until the next start of
  /// the process; later lines are still printed.
  void clear();

 private:
  friend class Breadcrumbs;
  class File;
  std::string breadcrumbStart();
  void write(std::string_view level, std::string_view message);
  void write(const ConsoleLines& lines, bool isUtf8);

  Clock& clock_;
  Console& console_;
  Lazy<File> file_;
};

}  // namespace orlan
