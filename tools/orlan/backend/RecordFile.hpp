#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "orlan/base/Result.hpp"

namespace orlan::devbackend {

/// A file of lines that only its owner may read (keys stand in it), each on the disk's way before the next
/// thing happens. One thread at a time.
class RecordFile {
 public:
  /// Creates or empties the file. The error names it.
  Result<void> open(const std::string& path);

  /// Does nothing while no file is open.
  void write(std::string_view line);

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, Close> file_;
};

}  // namespace orlan::devbackend
