// What the client knows, and what it does on several threads at once.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "backend/Bed.hpp"
#include "orlan/backend/ClientState.hpp"
#include "orlan/backend/RequestLayer.hpp"
#include "orlan/backend/StoreKeys.hpp"
#include "support/EchoHttp.hpp"

namespace orlan {
namespace {

TEST(RequestLayer, AnswersEachRequestOnceAndKeepsNoHandle) {
  sim::World world;
  sim::SimulatedPhone phone(world);
  std::atomic<int> answered = 0;
  test::EchoHttp http;
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

TEST(RequestLayer, NothingAnswersAfterItsEnd) {
  sim::World world;
  sim::SimulatedPhone phone(world);
  test::EchoHttp http;
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
  test::EchoHttp http;
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
        const auto token = client.currentPushToken();
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
