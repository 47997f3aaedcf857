#pragma once

#include <atomic>
#include <future>
#include <memory>
#include <mutex>

#include "orlan/platform/Platform.hpp"
#include "phones/common/ThreadQueue.hpp"

namespace orlan::test {

/// An HTTP client that answers everything on a thread of its own, as fast as it can: a device that is
/// registered, in a place without campaigns.
class EchoHttp final : public HttpClient {
 public:
  [[nodiscard]] bool isUrl(std::string_view) const override { return true; }
  [[nodiscard]] Subscription send(HttpRequest, HttpDone done) override {
    auto call = std::make_shared<Call>();
    ++handles;
    queue_.async([call, done = std::move(done)] {
      const std::lock_guard running(call->mutex);
      if (call->cancelled) return;
      done(HttpReply{
          .status = 200,
          .body = R"({"data":{"device_id":"D1","orlan_id":"77"},"geoCampaign":[],"pushCampaign":[]})"});
    });
    return Subscription::onCancel([this, call] {
      const std::lock_guard running(call->mutex);  // from inside `done` it is this thread's already
      call->cancelled = true;
      --handles;
    });
  }

  /// Returns once everything that was sent before has been answered.
  void flush() {
    std::promise<void> reached;
    queue_.async([&] { reached.set_value(); });
    reached.get_future().wait();
  }

  std::atomic<int> handles = 0;

 private:
  struct Call {
    std::recursive_mutex mutex;
    bool cancelled = false;
  };
  phone::ThreadQueue queue_{"http"};
};

/// `p` with another HTTP client, and other queues.
inline Platform with(const Platform& p, HttpClient& http, Queues& queues) {
  return {p.main,      queues,          p.clock,       p.random, p.store,  p.files,   http,
          p.locations, p.notifications, p.application, p.device, p.bundle, p.console, p.systemLog};
}

}  // namespace orlan::test
