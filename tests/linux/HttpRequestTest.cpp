#include <atomic>
#include <deque>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "linux/HttpFixture.hpp"

namespace orlan::linuxphone::test {
namespace {

/// Answers every request of a connection with its path.
void answerEach(Peer& peer) {
  for (std::string request = peer.readRequest(); !request.empty(); request = peer.readRequest()) {
    const auto path = request.substr(4, request.find(' ', 4) - 4);
    if (!peer.write(plainReply(200, path))) return;
  }
}

/// What the server gets of `request`, with its own address taken out.
std::string sentBytes(HttpRequest request) {
  std::string seen;
  LoopbackServer server([&](Peer& peer) {
    seen = peer.readRequest();
    peer.write(plainReply(200, ""));
  });
  request.url = server.url(request.url);
  EXPECT_EQ(summary(exchange(request)), request.method == "HEAD" ? "200 without a body" : "200: ");
  const std::string host = "Host: 127.0.0.1:" + std::to_string(server.port()) + "\r\n";
  if (const auto at = seen.find(host); at != std::string::npos) seen.erase(at, host.size());
  return seen;
}

TEST(HttpRequests, GoOutByteForByteWithNothingAdded) {
  using namespace std::string_literals;
  const std::string large(2'000'000, 'x');
  const std::pair<HttpRequest, std::string> rows[] = {
      {{"GET", "/a/../b?q=1&r#c", {}, {}}, "GET /a/../b?q=1&r HTTP/1.1\r\n\r\n"},
      {{"GET",
        "/",
        {{"B", "2"},
         {"a", "gr\xc3\xbc\xc3\x9f"},
         {"B", "3"},
         {"Empty", ""},
         {"Blank", " \t"},
         {"Colon", ":;"}},
        {}},
       "GET / HTTP/1.1\r\nB: 2\r\na: gr\xc3\xbc\xc3\x9f\r\nB: 3\r\nEmpty:\r\nBlank:\r\nColon: :;\r\n\r\n"},
      {{"POST", "/", {{"Content-Type", "a/b"}}, "x\0y\r\n"s},
       "POST / HTTP/1.1\r\nContent-Type: a/b\r\nContent-Length: 5\r\n\r\nx\0y\r\n"s},
      {{"POST", "/", {}, {}}, "POST / HTTP/1.1\r\nContent-Length: 0\r\n\r\n"},
      {{"PUT", "/", {{"content-length", "99"}}, "x"}, "PUT / HTTP/1.1\r\nContent-Length: 1\r\n\r\nx"},
      {{"POST", "/", {}, large}, "POST / HTTP/1.1\r\nContent-Length: 2000000\r\n\r\n" + large},
      {{"HEAD", "/", {}, {}}, "HEAD / HTTP/1.1\r\n\r\n"},
  };
  for (const auto& [request, expected] : rows) EXPECT_EQ(sentBytes(request), expected);
}

TEST(HttpRequests, TheEnvironmentsProxyDoesNotSeeTheLoopback) {
  LoopbackServer proxy([](Peer& peer) { peer.write(plainReply(200, "proxy")); });
  LoopbackServer server(answerEach);
  ::setenv("http_proxy", proxy.url().c_str(), 1);
  const auto result = exchange(get(server.url()));
  ::unsetenv("http_proxy");
  EXPECT_EQ(summary(result), "200: /");
  EXPECT_EQ(proxy.connections(), 0);
}

TEST(HttpConnections, AreKeptAndShared) {
  LoopbackServer server(answerEach);
  phone::PhoneObserver nobody;
  CurlHttpClient client(nobody);
  std::deque<Outcome> outcomes(100);
  std::vector<Subscription> handles;
  for (std::size_t i = 0; i < outcomes.size(); ++i) {
    const std::string path = "/" + std::to_string(i);
    handles.push_back(client.send(get(server.url(path)), outcomes[i].done()));
    if (i > 2) continue;
    EXPECT_EQ(summary(outcomes[i].wait()), "200: " + path);
    EXPECT_EQ(server.connections(), 1);
  }
  for (std::size_t i = 0; i < outcomes.size(); ++i) {
    EXPECT_EQ(summary(outcomes[i].wait()), "200: /" + std::to_string(i));
  }
  EXPECT_LE(server.connections(), 6);
}

TEST(HttpConnections, OneThatWasClosedMeanwhileIsReplaced) {
  std::atomic<bool> closed = false;
  LoopbackServer server([&](Peer& peer) {
    peer.readRequest();
    peer.write(plainReply(200, "x"));
    peer.close();
    closed = true;
    peer.waitForHangUp();
  });
  phone::PhoneObserver nobody;
  CurlHttpClient client(nobody);
  for (int i = 0; i < 2; ++i) {
    Outcome outcome;
    const auto handle = client.send(get(server.url()), outcome.done());
    EXPECT_EQ(summary(outcome.wait()), "200: x");
    while (!closed.exchange(false)) std::this_thread::yield();
  }
}

TEST(HttpConnections, ARequestThatMayHaveArrivedIsNotSentAgain) {
  std::atomic<int> requests = 0;
  LoopbackServer server([&](Peer& peer) {
    if (!peer.readRequest().empty()) ++requests;
    peer.write(plainReply(200, "x"));
    if (!peer.readRequest().empty()) ++requests;  // and no answer
  });
  phone::PhoneObserver nobody;
  CurlHttpClient client(nobody);
  for (const char* expected : {"200: x", "error -1"}) {
    Outcome outcome;
    const auto handle = client.send({"POST", server.url(), {}, "counted"}, outcome.done());
    EXPECT_EQ(summary(outcome.wait()), expected);
  }
  EXPECT_EQ(requests, 2);
}

TEST(HttpCancel, WaitsForACompletionThatIsRunning) {
  LoopbackServer server(answerEach);
  phone::PhoneObserver nobody;
  CurlHttpClient client(nobody);
  for (int round = 0; round < 20; ++round) {
    std::promise<void> started;
    std::promise<void> mayFinish;
    bool finished = false;  // unguarded: that the cancellation waits is what orders the accesses
    auto handle = client.send(get(server.url()), [&](const Result<HttpReply>&) {
      started.set_value();
      mayFinish.get_future().wait();
      finished = true;
    });
    started.get_future().wait();
    std::thread releaser([&] { mayFinish.set_value(); });
    handle.cancel();
    EXPECT_TRUE(finished);
    releaser.join();
  }
}

TEST(HttpCancel, TheClientsEndAnswersWhatIsOnItsWay) {
  LoopbackServer server([](Peer& peer) { peer.waitForHangUp(); });
  phone::PhoneObserver nobody;
  auto client = std::make_unique<CurlHttpClient>(nobody);
  Outcome first, second, sentFromInside;
  std::vector<Subscription> handles;
  Subscription inner;
  const auto held = std::make_shared<int>(0);
  client->send(get(server.url()), [held](const Result<HttpReply>&) {}).cancel();
  EXPECT_EQ(held.use_count(), 1);
  handles.push_back(client->send(get(server.url()), first.done()));
  handles.push_back(client->send(get(server.url()), [&](Result<HttpReply> result) {
    inner = client->send(get(server.url()), sentFromInside.done());
    second.done()(std::move(result));
  }));
  CurlHttpClient* ending = client.get();
  ending->~CurlHttpClient();
  ::operator delete(client.release());
  for (Outcome* each : {&first, &second, &sentFromInside}) {
    EXPECT_EQ(each->completions, 1);
    EXPECT_EQ(summary(each->wait()), "error -999");
  }
  handles.clear();  // after the client: nothing to cancel any more
}

}  // namespace
}  // namespace orlan::linuxphone::test
