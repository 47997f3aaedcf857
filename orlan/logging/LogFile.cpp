#include "orlan/logging/LogFile.hpp"

namespace orlan {
namespace {

/// A burst may grow the buffers; what it leaves behind beyond this is given back.
constexpr std::size_t kKeptBytes = 1 << 20;

}  // namespace

Logger::File::File(FileSystem& files, Queues& queues)
    : files_(files),
      path_(files.cachesDirectory() + "/orlan-sdk.log"),
      writer_(queues.make("com.orlan.logger")) {
  if (!files_.exists(path_)) (void)files_.writeAtomically(path_, "");
}

void Logger::File::append(std::string_view text) {
  bool first = false;
  {
    const std::lock_guard lock(mutex_);
    first = pending_.empty() && clears_.empty();
    pending_ += text;
  }
  if (first) wakeWriter();
}

void Logger::File::clear() {
  bool first = false;
  {
    const std::lock_guard lock(mutex_);
    first = pending_.empty() && clears_.empty();
    clears_.push_back(pending_.size());
  }
  if (first) wakeWriter();
}

void Logger::File::wakeWriter() {
  writer_->async([this] { drain(); });
}

void Logger::File::drain() {
  {
    const std::lock_guard lock(mutex_);
    pending_.swap(draining_);
    clears_.swap(drainingClears_);
  }
  const std::string_view text = draining_;
  std::size_t from = 0;
  for (const std::size_t end : drainingClears_) {
    save(text.substr(from, end - from));
    (void)files_.remove(path_);
    from = end;
  }
  save(text.substr(from));

  draining_.clear();
  drainingClears_.clear();
  if (draining_.capacity() > kKeptBytes) draining_.shrink_to_fit();
}

void Logger::File::save(std::string_view text) {
  if (!text.empty()) (void)files_.append(path_, text);
}

}  // namespace orlan
