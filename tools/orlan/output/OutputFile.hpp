#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "orlan/base/Result.hpp"

namespace orlan::output {

/// Where a program's output goes: standard output, or a file that takes the place of the one before as a
/// whole or not at all. What is no regular file (a pipe, a device) is written to as it is.
class OutputFile {
 public:
  /// `path`: empty for standard output. The error (domain "Output") names the file.
  [[nodiscard]] static Result<OutputFile> open(const std::string& path);

  /// The same for output that is only written when somebody names a file for it.
  [[nodiscard]] static Result<std::optional<OutputFile>> openIfNamed(const std::optional<std::string>& path);

  OutputFile(OutputFile&& other) noexcept;
  OutputFile& operator=(OutputFile&&) = delete;
  /// Without `finish` nothing is left behind.
  ~OutputFile();

  void write(std::string_view text);

  /// Everything is written and the file in its place, or the error says why not. Who reads standard output
  /// and goes away has what they wanted, which is no error. Once, at the end.
  [[nodiscard]] Result<void> finish();

 private:
  OutputFile(std::FILE* file, std::string target, std::string partial);
  int close();

  std::FILE* file_;
  std::string target_;   // empty: standard output
  std::string partial_;  // what is renamed at the end; empty: written in place
  int writeError_ = 0;   // the first errno
};

}  // namespace orlan::output
