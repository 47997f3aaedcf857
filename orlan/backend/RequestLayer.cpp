#include "orlan/backend/RequestLayer.hpp"

namespace orlan {

RequestLayer::RequestLayer(HttpClient& http, MainLoop& main) : http_(http), main_(main) {}

RequestLayer::~RequestLayer() {
  cancelAll();
}

// Handles are always destroyed outside the lock: that waits for a `done` that runs, which takes the lock.

void RequestLayer::send(HttpRequest request, HttpDone done) {
  Id id = 0;
  {
    const std::lock_guard lock(mutex_);
    if (ended_) return;
    id = ++last_;
    running_.try_emplace(id);
  }
  auto handle = http_.send(std::move(request), [this, id, done = std::move(done)](Result<HttpReply> reply) {
    done(std::move(reply));
    finish(id);
  });
  const std::lock_guard lock(mutex_);
  const auto slot = running_.find(id);
  if (slot != running_.end())
    slot->second = std::move(handle);  // else it is done already, or everything has ended
}

void RequestLayer::finish(Id id) {
  decltype(running_)::node_type finished;
  const std::lock_guard lock(mutex_);
  finished = running_.extract(id);
}

void RequestLayer::cancelAll() {
  decltype(running_) ending;
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    ending.swap(running_);
  }
}

}  // namespace orlan
