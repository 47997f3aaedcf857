#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "orlan/base/Lifetime.hpp"
#include "orlan/base/Result.hpp"
#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/FileSystem.hpp"
#include "orlan/platform/HttpClient.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// Sends the question for campaigns and turns the answer into them, off the main thread. The last good answer
/// stays, byte for byte, in a file that survives the process. Destroying it ends a fetch on its way. Main
/// thread.
class CampaignFetch {
 public:
  using Campaigns = std::shared_ptr<const CampaignData>;
  using Done = std::function<void(const Result<Campaigns>&)>;

  CampaignFetch(MainLoop& main, HttpClient& http, FileSystem& files, Logger& logger)
      : main_(main),
        http_(http),
        files_(files),
        logger_(logger),
        cachedURL_(files.cachesDirectory() + "/orlan-geofences.json") {}

  /// Sends at once; a good answer goes into the file first, which is done without when it cannot be written.
  /// `done` runs once, on the main thread, later, unless the end of this object comes before it. Not while an
  /// earlier one is under way.
  void send(HttpRequest request, Done done);

  /// What the file holds; null when that is nothing of use.
  [[nodiscard]] Campaigns cached() const;

 private:
  [[nodiscard]] Result<Campaigns> digest(const Result<HttpReply>& answer) const;  // on the client's queue
  [[nodiscard]] Result<Campaigns> decoded(std::string_view body) const;

  MainLoop& main_;
  HttpClient& http_;
  FileSystem& files_;
  Logger& logger_;
  const std::string cachedURL_;
  Subscription running_;
  Lifetime lifetime_;
};

}  // namespace orlan
