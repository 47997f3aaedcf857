#include "tools/orlan/backend/RecordFile.hpp"

#include <fcntl.h>
#include <fmt/format.h>

#include <cerrno>
#include <system_error>

#include "orlan/base/text.hpp"

namespace orlan::devbackend {

Result<void> RecordFile::open(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (descriptor < 0) {
    return Unexpected(Error{"orlan backend", -1,
                            fmt::format("{}: cannot be written: {}", text::escapedControls(path),
                                        std::generic_category().message(errno))});
  }
  file_.reset(::fdopen(descriptor, "w"));
  return {};
}

void RecordFile::write(std::string_view line) {
  if (!file_) return;
  std::fwrite(line.data(), 1, line.size(), file_.get());
  std::fputc('\n', file_.get());
  std::fflush(file_.get());
}

}  // namespace orlan::devbackend
