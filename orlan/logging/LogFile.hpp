#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "orlan/logging/Logger.hpp"

namespace orlan {

/// The file behind the logger. Callers only append to a buffer in memory; the queue "com.orlan.logger" takes
/// the buffer as a whole and opens the file once for all that has gathered.
class Logger::File {
 public:
  /// Creates an empty file when there is none; an existing one is continued.
  File(FileSystem& files, Queues& queues);

  [[nodiscard]] const std::string& path() const { return path_; }

  /// Any thread. Text that does not reach the file (missing file, full disk) is dropped.
  void append(std::string_view text);

  /// Deletes the file once everything appended before is in it. Any thread.
  void clear();

 private:
  void wakeWriter();
  void drain();
  void save(std::string_view text);

  FileSystem& files_;
  const std::string path_;

  std::mutex mutex_;
  std::string pending_;              // guarded by mutex_
  std::vector<std::size_t> clears_;  // guarded by mutex_: ends within pending_ at which the file is deleted

  std::string draining_;                     // the writer's; swapped with pending_, so both keep their memory
  std::vector<std::size_t> drainingClears_;  // the writer's

  const std::unique_ptr<SerialQueue> writer_;  // last: its end waits for a drain that still uses the rest
};

}  // namespace orlan
