#include "orlan/logging/Logger.hpp"

#include <fmt/format.h>

#include <array>
#include <memory>
#include <mutex>
#include <utility>

#include "orlan/base/Time.hpp"
#include "orlan/base/text.hpp"

namespace orlan {
namespace {

constexpr std::size_t mostPending = 16 * 1024 * 1024;
constexpr std::string_view breadcrumbLevel = "•";

/// "[2025-03-14T09:26:53Z] [INFO] ". Formatting a date costs more than the rest of a line, and most lines
/// share their second with the one before.
fmt::memory_buffer lineStart(TimePoint now, std::string_view level) {
  struct Second {
    std::chrono::sys_seconds time;
    std::array<char, 32> text;  // "[2025-03-14T09:26:53Z] [", with room for any year
    std::size_t size = 0;
  };
  thread_local Second last{};
  const auto second = std::chrono::floor<std::chrono::seconds>(now);
  if (last.size == 0 || second != last.time) {
    last.time = second;
    last.size = ("[" + isoDateTime(now) + "] [").copy(last.text.data(), last.text.size());
  }
  fmt::memory_buffer start;
  start.append(std::string_view(last.text.data(), last.size));
  start.append(level);
  start.append(std::string_view("] "));
  return start;
}

}  // namespace

/// The file behind the logger. Callers only append to a text in memory; a task on `io` takes it as a whole
/// and opens the file once for all that has gathered.
class Logger::File {
 public:
  /// Creates an empty file when there is none; an existing one is continued.
  File(Clock& clock, FileSystem& files, Queues& queues)
      : fileURL(files.cachesDirectory() + "/orlan-sdk.log"),
        clock_(clock),
        files_(files),
        io_(queues.make("com.orlan.logger")) {
    if (!files_.exists(fileURL)) (void)files_.writeAtomically(fileURL, "");
  }

  /// Text that does not reach the file (missing file, full disk) is dropped.
  void append(const ConsoleLines& lines) {
    bool isFirst = false;
    {
      const std::lock_guard lock(mutex_);
      if (pending_.size() >= mostPending) {
        missing_ += lines.count;
        return;
      }
      isFirst = pending_.empty();
      pending_ += lines.text;
    }
    if (isFirst) io_->async([this] { save(); });
  }

  /// Lines that come before this has run are deleted with the rest: they would find no file.
  void clear() {
    io_->async([this] {
      save();
      (void)files_.remove(fileURL);
    });
  }

  const std::string fileURL;

 private:
  void save() {
    std::size_t missing = 0;
    {
      const std::lock_guard lock(mutex_);
      saving_.swap(pending_);
      missing = std::exchange(missing_, 0);
    }
    if (missing > 0) {
      saving_ += fmt::to_string(lineStart(clock_.now(), "WARN"));
      saving_ += fmt::format("{} lines are missing here: the disk was too slow for them\n", missing);
    }
    if (!saving_.empty()) (void)files_.append(fileURL, saving_);
    saving_.clear();
    if (saving_.capacity() > mostPending) saving_.shrink_to_fit();
  }

  Clock& clock_;
  FileSystem& files_;
  std::mutex mutex_;
  std::string pending_;                    // guarded by mutex_
  std::size_t missing_ = 0;                // guarded by mutex_: lines that found no room behind those
  std::string saving_;                     // the queue's; swapped with pending_, so both keep their memory
  const std::unique_ptr<SerialQueue> io_;  // last: its end waits for a task that still uses the rest
};

Logger::Logger(Clock& clock, Console& console, FileSystem& files, Queues& queues)
    : clock_(clock),
      console_(console),
      file_([&clock, &files, &queues] { return std::make_shared<File>(clock, files, queues); }) {}

Logger::~Logger() = default;

void Logger::log(std::string_view message) {
  write("INFO", message);
}
void Logger::warn(std::string_view message) {
  write("WARN", message);
}
void Logger::error(std::string_view message) {
  write("ERROR", message);
}
void Logger::breadcrumb(std::string_view message) {
  write(breadcrumbLevel, message);
}

std::string Logger::logFileURL() {
  return file_->fileURL;
}

void Logger::clear() {
  file_->clear();
}

std::string Logger::breadcrumbStart() {
  return fmt::to_string(lineStart(clock_.now(), breadcrumbLevel));
}

void Logger::write(std::string_view level, std::string_view message) {
  auto line = lineStart(clock_.now(), level);
  const std::size_t messageAt = line.size();
  line.append(message);
  line.push_back('\n');
  write({level, {line.data(), line.size()}, messageAt, 1}, text::isUtf8(message));
}

void Logger::write(const ConsoleLines& lines, bool isUtf8) {
  File& file = *file_;
  console_.print(lines);
  if (isUtf8) file.append(lines);
}

}  // namespace orlan
