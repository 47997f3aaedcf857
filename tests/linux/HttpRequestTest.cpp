#include <sys/socket.h>

#include <atomic>
#include <future>
#include <string>
#include <thread>
#include <utility>

#include "linux/HttpFixture.hpp"

namespace orlan::linuxphone::test {
namespace {

/// Answers every request with its path.
void echo(Peer& peer) {
  peer.answerEach([](const std::string& path) { return plainReply(200, path); });
}

/// What the server gets of `request`, with its own address taken out.
std::string sentBytes(HttpRequest request) {
  std::string seen;
  LoopbackServer server([&](Peer& peer) {
    seen = peer.readRequest();
    peer.write(plainReply(200, ""));
  });
  request.url = server.url(request.url);
  EXPECT_EQ(exchange(request), request.method == "HEAD" ? "200 without a body" : "200: ");
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
        {{"B", "2"}, {"a", "gr\xc3\xbc\xc3\x9f"}, {"B", "3"}, {"Empty", ""}, {"Colon", ":;"}},
        {}},
       "GET / HTTP/1.1\r\nB: 2\r\na: gr\xc3\xbc\xc3\x9f\r\nB: 3\r\nEmpty:\r\nColon: :;\r\n\r\n"},
      {{"POST", "/", {{"Content-Type", "a/b"}}, "x\0y\r\n"s},
       "POST / HTTP/1.1\r\nContent-Type: a/b\r\nContent-Length: 5\r\n\r\nx\0y\r\n"s},
      {{"POST", "/", {}, {}}, "POST / HTTP/1.1\r\nContent-Length: 0\r\n\r\n"},
      {{"PUT", "/", {{"content-length", "99"}}, "x"}, "PUT / HTTP/1.1\r\nContent-Length: 1\r\n\r\nx"},
      {{"POST", "/", {}, large}, "POST / HTTP/1.1\r\nContent-Length: 2000000\r\n\r\n" + large},
      {{"HEAD", "/", {{"Blank", " \t"}}, {}}, "HEAD / HTTP/1.1\r\nBlank:\r\n\r\n"},
  };
  for (const auto& [request, expected] : rows) EXPECT_EQ(sentBytes(request), expected);
}

TEST(HttpRequests, TheEnvironmentsProxyDoesNotSeeTheLoopback) {
  LoopbackServer proxy([](Peer& peer) { peer.write(plainReply(200, "proxy")); });
  LoopbackServer server(echo);
  ::setenv("http_proxy", proxy.url().c_str(), 1);
  EXPECT_EQ(exchange(get(server.url())), "200: /");
  ::unsetenv("http_proxy");
}

TEST(HttpConnections, AreKeptAndShared) {
  LoopbackServer server(echo);
  Client client;
  for (int i = 0; i < 3; ++i) EXPECT_EQ(client.exchange(get(server.url("/kept"))), "200: /kept");
  EXPECT_EQ(server.connections(), 1);
  for (int i = 0; i < 100; ++i) client.send(get(server.url("/" + std::to_string(i))));
  for (std::size_t i = 0; i < 100; ++i) {
    EXPECT_EQ(summary(client.outcomes[i + 3].wait()), "200: /" + std::to_string(i));
  }
  EXPECT_LE(server.connections(), 6);
}

TEST(HttpConnections, OneThatWasClosedMeanwhileIsReplaced) {
  std::atomic<bool> closed = false;
  LoopbackServer server([&](Peer& peer) {
    peer.readRequest();
    peer.write(plainReply(200, "x"));
    ::shutdown(peer.socket(), SHUT_WR);
    closed = true;
    peer.waitForHangUp();
  });
  Client client;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(client.exchange(get(server.url())), "200: x");
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
  Client client;
  for (const char* expected : {"200: x", "URLError -1"}) {
    EXPECT_EQ(client.exchange({"POST", server.url(), {}, "counted"}), expected);
  }
  EXPECT_EQ(requests, 2);
}

TEST(HttpCancel, WaitsForACompletionThatIsRunning) {
  LoopbackServer server(echo);
  Client client;
  for (int round = 0; round < 20; ++round) {
    std::promise<void> started;
    std::promise<void> mayFinish;
    bool finished = false;  // unguarded: that the cancellation waits is what orders the accesses
    auto handle = client.http->send(get(server.url()), [&](const Result<HttpReply>&) {
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

}  // namespace
}  // namespace orlan::linuxphone::test
