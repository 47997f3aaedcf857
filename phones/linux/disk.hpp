#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>

#include "orlan/base/Result.hpp"

/// Plain work on files. Any thread; calls may block on disk.
namespace orlan::linuxphone::disk {

/// Makes `directory` and what is missing above it, mode 0700. Whether it is there and can be written to.
bool makeDirectory(const std::string& directory);

/// The whole of any file of at most `longest` bytes.
[[nodiscard]] Result<std::string, std::error_code> read(const std::string& path,
                                                        std::size_t longest = std::size_t{1} << 30);

/// Puts `bytes` in the place of the file at `path` (mode 0600), or leaves the old one: the new file is
/// written beside it, flushed to the disk and renamed.
Result<void, std::error_code> replace(const std::string& path, std::string_view bytes);

/// Appends to a file that is there, all of `bytes` or nothing.
Result<void, std::error_code> append(const std::string& path, std::string_view bytes);

/// Removes what a writer that was killed inside `replace` left in `directory`.
void clearAbandoned(const std::string& directory);

}  // namespace orlan::linuxphone::disk
