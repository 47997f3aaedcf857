// What the client knows, and what it does on several threads at once.
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <mutex>
#include <thread>

#include "backend/Bed.hpp"
#include "orlan/backend/ClientState.hpp"
#include "orlan/backend/RequestLayer.hpp"
#include "orlan/backend/StoreKeys.hpp"
#include "phones/common/ThreadQueue.hpp"

namespace orlan {
namespace {

/// A client whose answers come on a thread of its own, as fast as it can.
class EchoClient final : public HttpClient {
 public:
  [[nodiscard]] bool isUrl(std::string_view) const override { return true; }
  [[nodiscard]] Subscription send(HttpRequest, HttpDone done) override {
    auto call = std::make_shared<Call>();
    ++handles;
    queue_.async([call, done = std::move(done)] {
      const std::lock_guard running(call->mutex);
      if (!call->cancelled)
        done(HttpReply{.status = 200, .body = R"({"data":{"device_id":"D1","orlan_id":"77"}})"});
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

TEST(RequestLayer, AnswersEachRequestOnceAndKeepsNoHandle) {
  sim::World world;
  sim::SimulatedPhone phone(world);
  std::atomic<int> answered = 0;
  EchoClient http;
  RequestLayer requests(http, phone.platform().main);
  std::vector<std::thread> senders;
  for (int i = 0; i < 4; ++i) {
    senders.emplace_back([&] {
      for (int n = 0; n < 500; ++n) {
        requests.send({}, [&](const Result<HttpReply>&) {
          ++answered;
          requests.send({}, [&](const Result<HttpReply>&) { ++answered; });
        });
      }
    });
  }
  for (auto& sender : senders) sender.join();
  http.flush();  // the first requests,
  http.flush();  // and those that they sent
  EXPECT_EQ(answered, 4000);
  EXPECT_EQ(http.handles, 0);
}

TEST(Client, MayEndWhileAnswersArrive) {
  sim::World world;
  sim::SimulatedPhone phone(world);
  const auto parts = phone.platform();
  EchoClient http;
  Logger logger(parts.clock, parts.console, parts.files, parts.queues);
  Lazy<LocationTrackingReliability> unused([] { return nullptr; });
  int answers = 0;
  for (int round = 0; round < 100; ++round) {
    parts.store.remove(storeKeys::deviceRegistered);
    APIService api(test::with(parts, http), BaseUrls::builtIn(), logger, unused);
    api.reportActivity(ActivityType::mediaViewed, 1, 2, NotificationType::notification);
    api.createPluginActivity("plugin_started", "K", Config::Environment::staging);
    const auto subscription = api.registerDevice("K", {}).subscribe([&](const auto&) { ++answers; });
  }
  world.settle();
  EXPECT_EQ(answers, 0);
  EXPECT_EQ(http.handles, 0);
}

TEST(RequestLayer, NothingAnswersAfterItsEnd) {
  sim::World world;
  sim::SimulatedPhone phone(world);
  EchoClient http;
  for (int round = 0; round < 200; ++round) {
    auto requests = std::make_unique<RequestLayer>(http, phone.platform().main);
    std::atomic<bool> over = false;
    std::atomic<int> late = 0;
    for (int n = 0; n < 20; ++n) {
      requests->send({}, [&](const Result<HttpReply>&) {
        if (over) ++late;
        requests->send({}, [&](const Result<HttpReply>&) { late += over ? 1 : 0; });
      });
    }
    requests->cancelAll();
    over = true;
    requests->send({}, [&](const Result<HttpReply>&) { ++late; });
    requests.reset();
    EXPECT_EQ(late, 0);
  }
}

TEST(RequestLayer, DeliversOnTheMainThreadAndNotOnceItIsGone) {
  sim::World world;
  sim::SimulatedPhone phone(world);
  EchoClient http;
  auto requests = std::make_unique<RequestLayer>(http, phone.platform().main);
  for (const bool gone : {false, true}) {
    int heard = 0;
    const auto subscription =
        requests->ask<int>({}, [](const auto&) { return 7; }).subscribe([&](const auto&) { ++heard; });
    http.flush();
    EXPECT_EQ(heard, 0);
    if (gone) requests.reset();
    world.settle();
    EXPECT_EQ(heard, gone ? 0 : 1);
  }
}

TEST(ClientState, FieldsMayBeReadAndWrittenFromAnyThread) {
  ClientState client(BaseUrls::builtIn());
  std::atomic<bool> torn = false;
  std::vector<std::thread> threads;
  for (const char letter : {'a', 'b', 'c'}) {
    threads.emplace_back([&, text = std::string(100, letter)] {
      for (int i = 0; i < 500; ++i) {
        client.setCredentials(TransmissionAppCredentials{.companyApiKey = text, .appApiKey = text});
        client.setFCMToken(text);
        client.setEnv(Config::Environment::nightly);
        client.setAuthenticated();
        const auto token = client.pushToken();
        const auto credentials = client.credentials();
        if (token != std::string(100, token[0])) torn = true;
        if (credentials->companyApiKey != credentials->appApiKey) torn = true;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_FALSE(torn);
}

}  // namespace
}  // namespace orlan
