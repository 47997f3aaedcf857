#include "phones/linux/disk.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "phones/linux/FileDescriptor.hpp"

namespace orlan::linuxphone::disk {
namespace {

constexpr std::string_view temporaryMark = ".orlan-new-";
constexpr auto abandonedAfter = std::chrono::hours(1);  // nobody takes that long to write a file

std::error_code lastError() {
  return {errno, std::generic_category()};
}

std::string directoryOf(const std::string& path) {
  const auto slash = path.rfind('/');
  return slash == std::string::npos ? std::string("./") : path.substr(0, slash + 1);
}

bool writeAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

/// So that a rename is not lost in a power cut. A file system that cannot do it is taken at its word.
void flushDirectory(const std::string& directory) {
  const FileDescriptor opened(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened) ::fsync(opened.get());
}

}  // namespace

bool makeDirectory(const std::string& directory) {
  for (std::size_t end = directory.find('/', 1);; end = directory.find('/', end + 1)) {
    ::mkdir(directory.substr(0, end).c_str(), 0700);  // what is there already stays as it is
    if (end == std::string::npos) break;
  }
  return ::access(directory.c_str(), W_OK | X_OK) == 0;
}

Result<std::string, std::error_code> read(const std::string& path, std::size_t longest) {
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file) return Unexpected(lastError());
  std::string bytes;
  char buffer[1 << 16];
  while (true) {
    const ssize_t got = ::read(file.get(), buffer, sizeof buffer);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return Unexpected(lastError());
    if (got == 0) return bytes;
    bytes.append(buffer, static_cast<std::size_t>(got));
    if (bytes.size() > longest) return Unexpected(std::make_error_code(std::errc::file_too_large));
  }
}

Result<void, std::error_code> replace(const std::string& path, std::string_view bytes) {
  const std::string directory = directoryOf(path);
  std::string temporary = directory + std::string(temporaryMark) + "XXXXXX";
  const FileDescriptor file(::mkostemp(temporary.data(), O_CLOEXEC));  // mode 0600
  if (!file) return Unexpected(lastError());
  const bool written = writeAll(file.get(), bytes) && ::fsync(file.get()) == 0;
  if (!written || ::rename(temporary.c_str(), path.c_str()) != 0) {
    const auto why = lastError();
    ::unlink(temporary.c_str());
    return Unexpected(why);
  }
  flushDirectory(directory);
  return {};
}

Result<void, std::error_code> append(const std::string& path, std::string_view bytes) {
  const FileDescriptor file(::open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
  if (!file) return Unexpected(lastError());
  const off_t before = ::lseek(file.get(), 0, SEEK_END);
  if (writeAll(file.get(), bytes)) return {};
  const auto why = lastError();
  // Half of it may be there: a full disk. Nothing more can be done if even this fails.
  [[maybe_unused]] const int cut = before >= 0 ? ::ftruncate(file.get(), before) : -1;
  return Unexpected(why);
}

void clearAbandoned(const std::string& directory) {
  namespace fs = std::filesystem;
  std::error_code failed;
  const auto now = fs::file_time_type::clock::now();
  for (fs::directory_iterator entry(directory, failed), end; !failed && entry != end;
       entry.increment(failed)) {
    if (!entry->path().filename().string().starts_with(temporaryMark)) continue;
    std::error_code ignored;
    const auto written = entry->last_write_time(ignored);
    if (!ignored && now - written > abandonedAfter) fs::remove(entry->path(), ignored);
  }
}

}  // namespace orlan::linuxphone::disk
