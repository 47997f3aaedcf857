#include "orlan/logging/Logger.hpp"

#include <memory>
#include <utility>
#include <vector>

#include "orlan/base/Time.hpp"
#include "orlan/base/text.hpp"

namespace orlan {

/// The file behind the logger. Callers only append to a text in memory; a task on `io` takes it as a whole
/// and opens the file once for all that has gathered.
class Logger::File {
 public:
  /// Creates an empty file when there is none; an existing one is continued.
  File(FileSystem& files, Queues& queues)
      : fileURL(files.cachesDirectory() + "/orlan-sdk.log"),
        files_(files),
        io_(queues.make("com.orlan.logger")) {
    if (!files_.exists(fileURL)) (void)files_.writeAtomically(fileURL, "");
  }

  /// Text that does not reach the file (missing file, full disk) is dropped.
  void append(std::string_view text) {
    const std::lock_guard lock(mutex_);
    if (pending_.empty()) io_->async([this] { save(); });
    pending_ += text;
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
    {
      const std::lock_guard lock(mutex_);
      saving_.swap(pending_);
    }
    if (!saving_.empty()) (void)files_.append(fileURL, saving_);
    saving_.clear();
  }

  FileSystem& files_;
  std::mutex mutex_;
  std::string pending_;                    // guarded by mutex_
  std::string saving_;                     // the queue's; swapped with pending_, so both keep their memory
  const std::unique_ptr<SerialQueue> io_;  // last: its end waits for a task that still uses the rest
};

Logger::Logger(Clock& clock, Console& console, FileSystem& files, Queues& queues)
    : clock_(clock),
      console_(console),
      file_([&files, &queues] { return std::make_shared<File>(files, queues); }) {}

Logger::~Logger() = default;

void Logger::log(std::string_view message) {
  write("INFO", {&message, 1});
}
void Logger::warn(std::string_view message) {
  write("WARN", {&message, 1});
}
void Logger::error(std::string_view message) {
  write("ERROR", {&message, 1});
}
void Logger::breadcrumb(std::string_view message) {
  write("•", {&message, 1});
}
void Logger::breadcrumbs(std::span<const std::string_view> messages) {
  write("•", messages);
}

std::string Logger::logFileURL() {
  return file_->fileURL;
}

void Logger::clear() {
  file_->clear();
}

std::string Logger::lineStart() {
  const TimePoint now = clock_.now();
  const auto second = std::chrono::floor<std::chrono::seconds>(now);
  const std::lock_guard lock(mutex_);
  if (start_.empty() || second != second_) {
    second_ = second;
    start_ = "[" + isoDateTime(now) + "] [";
  }
  return start_;
}

void Logger::write(std::string_view level, std::span<const std::string_view> messages) {
  if (messages.empty()) return;
  File& file = *file_;
  std::string prefix = lineStart();
  prefix.append(level).append("] ");
  std::size_t size = messages.size() * (prefix.size() + 1);
  for (const auto message : messages) size += message.size();
  std::string text;
  text.reserve(size);
  std::vector<ConsoleLine> lines;
  lines.reserve(messages.size());
  for (const auto message : messages) {
    const std::size_t from = text.size();
    text.append(prefix).append(message).append("\n");
    lines.push_back({level, message, std::string_view(text).substr(from)});
  }

  console_.print(lines);
  if (text::isUtf8(text)) return file.append(text);
  for (const auto& line : lines) {  // whatever a broken line holds, it does not take its neighbours with it
    if (text::isUtf8(line.text)) file.append(line.text);
  }
}

}  // namespace orlan
