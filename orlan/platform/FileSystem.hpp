#pragma once

#include <string>
#include <string_view>

#include "orlan/base/Result.hpp"

namespace orlan {

/// The files of the application. Paths are absolute texts made of `cachesDirectory()` and a name. Any thread;
/// calls may block on disk. Failures are values; nothing is left half-written.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// Absolute, without a trailing slash; exists.
  [[nodiscard]] virtual std::string cachesDirectory() const = 0;

  [[nodiscard]] virtual bool exists(const std::string& path) const = 0;
  [[nodiscard]] virtual Result<std::string> read(const std::string& path) const = 0;

  /// Replaces the whole file or leaves the old one; never a mixture, also across a power cut.
  virtual Result<void> writeAtomically(const std::string& path, std::string_view bytes) = 0;

  /// Appends to a file that is there; a missing file is an error and is not created.
  virtual Result<void> append(const std::string& path, std::string_view bytes) = 0;

  virtual Result<void> remove(const std::string& path) = 0;
};

}  // namespace orlan
