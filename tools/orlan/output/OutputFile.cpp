#include "tools/orlan/output/OutputFile.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "orlan/base/text.hpp"

namespace orlan::output {
namespace {

namespace fs = std::filesystem;

constexpr mode_t asTheUserLikes = 0666;  // the process's mask takes its share

Unexpected<Error> cannotWrite(const std::string& path, const std::string& why) {
  return Unexpected(Error{"Output", -1, "cannot write " + text::escapedControls(path) + ": " + why});
}

/// The file behind links, so that a link stays one.
std::string behindLinks(const std::string& path) {
  std::error_code none;
  const fs::path real = fs::weakly_canonical(path, none);
  return none ? path : real.string();
}

}  // namespace

OutputFile::OutputFile(std::FILE* file, std::string target, std::string partial)
    : file_(file), target_(std::move(target)), partial_(std::move(partial)) {}

Result<std::optional<OutputFile>> OutputFile::openIfNamed(const std::optional<std::string>& path) {
  std::optional<OutputFile> file;
  if (path) {
    auto opened = open(*path);
    if (!opened) return Unexpected(opened.error());
    file.emplace(std::move(opened).value());
  }
  return file;
}

OutputFile::OutputFile(OutputFile&& other) noexcept
    : file_(std::exchange(other.file_, nullptr)),
      target_(std::move(other.target_)),
      partial_(std::exchange(other.partial_, {})),
      writeError_(other.writeError_) {}

OutputFile::~OutputFile() {
  if (file_ == nullptr) return;
  close();
  if (!partial_.empty()) ::unlink(partial_.c_str());
}

Result<OutputFile> OutputFile::open(const std::string& path) {
  if (path.empty()) return OutputFile(stdout, {}, {});
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  if (fs::is_directory(status)) return cannotWrite(path, "is a directory");
  const bool inPlace = fs::exists(status) && !fs::is_regular_file(status);
  std::string target = behindLinks(path);
  std::string partial = inPlace ? std::string() : target + "." + std::to_string(::getpid()) + ".partial";
  const std::string& opened = inPlace ? target : partial;
  const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (inPlace ? 0 : O_TRUNC);
  const int descriptor = ::open(opened.c_str(), flags, asTheUserLikes);
  std::FILE* file = descriptor < 0 ? nullptr : ::fdopen(descriptor, "wb");
  if (file == nullptr) {
    const int code = errno;
    if (descriptor >= 0) ::close(descriptor);
    return cannotWrite(path, std::generic_category().message(code));
  }
  return OutputFile(file, std::move(target), std::move(partial));
}

void OutputFile::write(std::string_view text) {
  if (writeError_ != 0) return;
  if (std::fwrite(text.data(), 1, text.size(), file_) != text.size()) writeError_ = errno;
}

int OutputFile::close() {
  std::FILE* file = std::exchange(file_, nullptr);
  const bool fine = file == stdout ? std::fflush(file) == 0 : std::fclose(file) == 0;
  return fine ? 0 : errno;
}

Result<void> OutputFile::finish() {
  const int closing = close();
  int code = writeError_ != 0 ? writeError_ : closing;
  if (!partial_.empty()) {
    if (code == 0 && std::rename(partial_.c_str(), target_.c_str()) != 0) code = errno;
    if (code != 0) ::unlink(partial_.c_str());
  }
  if (code == 0 || (target_.empty() && code == EPIPE)) return {};
  return cannotWrite(target_.empty() ? "standard output" : target_, std::generic_category().message(code));
}

}  // namespace orlan::output
