#include "tools/orlan/backend/RecordFile.hpp"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "orlan/base/text.hpp"

namespace orlan::devbackend {
namespace {

namespace fs = std::filesystem;

linuxphone::FileDescriptor openAnew(const std::string& path) {
  std::error_code ignored;
  const auto behindLinks = fs::status(path, ignored);
  const bool inPlace = fs::exists(behindLinks) && !fs::is_regular_file(behindLinks);
  const auto there = fs::symlink_status(path, ignored);
  if (fs::is_regular_file(there) && ::unlink(path.c_str()) != 0) return {};
  const int flags = inPlace ? O_WRONLY : O_WRONLY | O_CREAT | O_EXCL;
  return linuxphone::FileDescriptor(::open(path.c_str(), flags | O_CLOEXEC, 0600));
}

}  // namespace

Result<void> RecordFile::open(const std::string& path) {
  file_ = openAnew(path);
  if (file_) return {};
  const std::string why = errno == EEXIST ? "is a link" : std::generic_category().message(errno);
  return Unexpected(
      Error{"orlan backend", -1, fmt::format("{}: cannot be written: {}", text::escapedControls(path), why)});
}

void RecordFile::write(std::string line) {
  line += '\n';
  [[maybe_unused]] const auto written = ::write(file_.get(), line.data(), line.size());
}

}  // namespace orlan::devbackend
