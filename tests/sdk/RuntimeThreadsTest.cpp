#include <gtest/gtest.h>

#include <condition_variable>
#include <deque>
#include <thread>

#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/Runtime.hpp"
#include "phones/common/ThreadQueue.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;

/// An HTTP client with a thread of its own that answers everything at once.
class ThreadedHttp final : public HttpClient {
 public:
  ~ThreadedHttp() override {
    {
      const std::lock_guard lock(mutex_);
      ending_ = true;
    }
    changed_.notify_all();
    thread_.join();
  }

  [[nodiscard]] bool isUrl(std::string_view) const override { return true; }

  [[nodiscard]] Subscription send(HttpRequest request, HttpDone done) override {
    const std::string body =
        request.url.ends_with("/create") && request.url.find("registerd") != std::string::npos
            ? R"({"data":{"device_id":"D1","orlan_id":"O1"}})"
            : R"({"geoCampaign":[],"pushCampaign":[]})";
    auto call = std::make_shared<Call>(Call{std::move(done), body});
    {
      const std::lock_guard lock(mutex_);
      waiting_.push_back(call);
    }
    changed_.notify_all();
    return Subscription::onCancel([this, call] { forget(call); });
  }

 private:
  struct Call {
    HttpDone done;
    std::string body;
  };

  void forget(const std::shared_ptr<Call>& call) {
    std::unique_lock lock(mutex_);
    std::erase(waiting_, call);
    if (std::this_thread::get_id() == thread_.get_id()) return;
    changed_.wait(lock, [&] { return running_ != call; });
  }

  void run() {
    std::unique_lock lock(mutex_);
    while (true) {
      changed_.wait(lock, [this] { return ending_ || !waiting_.empty(); });
      if (ending_) return;
      running_ = waiting_.front();
      waiting_.pop_front();
      const auto call = running_;
      lock.unlock();
      call->done(HttpReply{200, {}, call->body});
      lock.lock();
      running_.reset();
      changed_.notify_all();
    }
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::shared_ptr<Call>> waiting_;
  std::shared_ptr<Call> running_;
  bool ending_ = false;
  std::thread thread_{[this] { run(); }};
};

// Answers come from another thread while the library is taken down; the sanitizers say whether anything is
// touched that is gone.
TEST(RuntimeThreads, MayEndAtAnyMoment) {
  sim::World world;
  sim::SimulatedPhone phone(world, {.location = {.position = Location{{51.5, -0.12}, 5.0, {}}}});
  ThreadedHttp http;
  phone::ThreadQueues queues;
  const Platform simulated = phone.platform();
  const Platform threaded{simulated.main,
                          queues,
                          simulated.clock,
                          simulated.random,
                          simulated.store,
                          simulated.files,
                          http,
                          simulated.locations,
                          simulated.notifications,
                          simulated.application,
                          simulated.device,
                          simulated.bundle,
                          simulated.console,
                          simulated.systemLog};
  for (int round = 0; round < 300; ++round) {
    {
      Runtime runtime(threaded);
      runtime.services().plugin->start("KEY", Config::Environment::staging, {}, {});
      for (int turn = 0; turn < round % 7; ++turn) {
        world.settle();
        std::this_thread::yield();
      }
    }
    phone.relaunch();
    if (round % 3 == 0) phone.store().change("Orlan.DeviceRegistered.v1", nullptr);
  }
  EXPECT_EQ(phone.store().string("Orlan.DeviceID"), "D1") << "some rounds got as far as the answer";
}

}  // namespace
}  // namespace orlan
