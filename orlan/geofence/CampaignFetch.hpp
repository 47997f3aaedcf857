#pragma once

#include <functional>
#include <memory>

#include "orlan/base/Lifetime.hpp"
#include "orlan/base/Result.hpp"
#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/geofence/CampaignCache.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/HttpClient.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// Sends the question for campaigns and turns the answer into them, off the main thread. Destroying it ends a
/// fetch on its way. Main thread.
class CampaignFetch {
 public:
  using Campaigns = std::shared_ptr<const CampaignData>;
  using Done = std::function<void(const Result<Campaigns>&)>;

  CampaignFetch(MainLoop& main, HttpClient& http, CampaignCache& cache, Logger& logger)
      : main_(main), http_(http), cache_(cache), logger_(logger) {}

  /// Sends at once; a good answer goes into the cache first. `done` runs once, on the main thread, later,
  /// unless another `send` or the end of this object comes before it.
  void send(HttpRequest request, Done done);

 private:
  [[nodiscard]] Result<Campaigns> digest(const Result<HttpReply>& answer);  // on the HTTP client's queue

  MainLoop& main_;
  HttpClient& http_;
  CampaignCache& cache_;
  Logger& logger_;
  std::unique_ptr<Lifetime> round_;
  Subscription running_;
};

}  // namespace orlan
