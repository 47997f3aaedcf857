#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "orlan/geofence/CampaignAnswer.hpp"
#include "orlan/platform/FileSystem.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// The file in which the last good answer survives the process, byte for byte. Main thread, but for `keep`.
class CampaignCache {
 public:
  CampaignCache(FileSystem& files, Queues& queues) : files_(files), queues_(queues) {}

  /// Begins to read the file on a queue of its own, so that little or nothing is left to do for `take`.
  void preload();

  /// What the file holds; null when that is nothing of use.
  [[nodiscard]] std::shared_ptr<const CampaignAnswer> take();

  /// Any thread. That a file cannot be written is nobody's concern.
  void keep(std::string_view body);

 private:
  [[nodiscard]] std::string path() const { return files_.cachesDirectory() + "/orlan-geofences.json"; }
  [[nodiscard]] std::shared_ptr<const CampaignAnswer> read() const;

  FileSystem& files_;
  Queues& queues_;
  std::shared_ptr<const CampaignAnswer> preloaded_;  // the queue's, as long as there is one
  std::unique_ptr<SerialQueue> queue_;
};

}  // namespace orlan
