#pragma once

#include <string>

#include "orlan/base/Result.hpp"
#include "phones/linux/FileDescriptor.hpp"

namespace orlan::devbackend {

/// A file of lines that only its owner may read (keys stand in it), each on the disk's way before the next
/// thing happens. One thread at a time.
class RecordFile {
 public:
  /// A new file in the place of the one before, so that nobody who may read that one, or has it open, reads
  /// on. A link is refused, for what it names is not ours to replace; a pipe or device is written to as it
  /// is. The error names the file.
  Result<void> open(const std::string& path);

  /// Does nothing while no file is open.
  void write(std::string line);

 private:
  linuxphone::FileDescriptor file_;
};

}  // namespace orlan::devbackend
