#pragma once

#include <functional>
#include <memory>

#include "orlan/base/Lifetime.hpp"
#include "orlan/base/Result.hpp"
#include "orlan/geofence/CampaignCache.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/platform/HttpClient.hpp"
#include "orlan/platform/SerialQueue.hpp"

namespace orlan {

/// Sends the question for campaigns and turns the answer into them, off the main thread. Destroying it ends a
/// fetch on its way. Main thread.
class CampaignFetch {
 public:
  using Answer = std::shared_ptr<const CampaignAnswer>;
  using Done = std::function<void(const Result<Answer>&)>;

  CampaignFetch(MainLoop& main, HttpClient& http, CampaignCache& cache, Logger& logger)
      : main_(main), http_(http), cache_(cache), logger_(logger) {}

  /// Sends at once; a good answer goes into the cache first, which is done without when it cannot be written.
  /// The same answer as last time is not made anew. `done` runs once, on the main thread, later, unless the
  /// end of this object comes before it. Not while an earlier one is under way.
  void send(HttpRequest request, Done done);

  /// What the cache holds; null when that is nothing of use. Before anything is sent.
  [[nodiscard]] Answer cached();

 private:
  [[nodiscard]] Result<Answer> digest(const Result<HttpReply>& reply);  // on the client's queue

  MainLoop& main_;
  HttpClient& http_;
  CampaignCache& cache_;
  Logger& logger_;
  Answer last_;  // the client's queue's, while a fetch is under way
  Subscription running_;
  Lifetime lifetime_;
};

}  // namespace orlan
