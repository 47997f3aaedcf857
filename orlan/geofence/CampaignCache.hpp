#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "orlan/platform/FileSystem.hpp"

namespace orlan {

/// The last good answer of the backend, byte for byte, in a file that survives the process. Any thread; may
/// block on disk. A file that cannot be read counts as none, one that cannot be written is done without.
class CampaignCache {
 public:
  explicit CampaignCache(FileSystem& files)
      : files_(files), path_(files.cachesDirectory() + "/orlan-geofences.json") {}

  [[nodiscard]] std::optional<std::string> read() const {
    auto bytes = files_.read(path_);
    if (!bytes) return std::nullopt;
    return std::move(bytes).value();
  }
  void write(std::string_view bytes) { (void)files_.writeAtomically(path_, bytes); }

 private:
  FileSystem& files_;
  const std::string path_;
};

}  // namespace orlan
