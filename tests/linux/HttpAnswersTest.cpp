#include <deque>
#include <string>
#include <vector>

#include "linux/HttpFixture.hpp"

// Whatever the server does, a request is answered exactly once (`exchange` checks that) and truthfully.
namespace orlan::linuxphone::test {
namespace {

using std::chrono::milliseconds;

TEST(HttpAnswers, AreWhatTheServerSaid) {
  const struct {
    const char* name;
    std::string bytes;
    std::string expected;
  } rows[] = {
      {"with length", plainReply(418, "teapot"), "418: teapot"},
      {"ended by closing", "HTTP/1.0 200\r\n\r\nhello", "200: hello"},
      {"nothing before closing", "HTTP/1.1 200 OK\r\n\r\n", "200: "},
      {"no content", "HTTP/1.1 204 No Content\r\n\r\n", "204 without a body"},
      {"not modified", "HTTP/1.1 304 Not Modified\r\nContent-Length: 5\r\n\r\n", "304 without a body"},
      {"interim answers first",
       "HTTP/1.1 103 Early Hints\r\nX: early\r\n\r\nHTTP/1.1 100 Continue\r\n\r\n" + plainReply(200, "hello"),
       "200: hello"},
      {"only an interim answer", "HTTP/1.1 100 Continue\r\n\r\n", "error -1"},
      {"cut off in the status", "HTTP/1.1 20", "error -1"},
      {"cut off in the headers", "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n", "error -1"},
      {"cut off in the body", "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhello", "error -1"},
      {"chunked, cut off", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhel", "error -1"},
      {"impossible length", "HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\nhello", "error -1011"},
      {"redirect", "HTTP/1.1 302 Found\r\nLocation: /elsewhere\r\nContent-Length: 0\r\n\r\n", "302: "},
      {"nothing at all", "", "error -1"},
      {"another protocol", "SSH-2.0-OpenSSH_9.2\r\n", "no HTTP"},
  };
  for (const auto& row : rows) {
    LoopbackServer server([&](Peer& peer) {
      peer.readRequest();
      peer.write(row.bytes);
    });
    EXPECT_EQ(summary(exchange(get(server.url()))), row.expected) << row.name;
    EXPECT_EQ(server.connections(), 1) << row.name;  // no second try, no redirect
  }
}

TEST(HttpAnswers, CarryTheHeadersOfTheFinalAnswerInTheirOrder) {
  LoopbackServer server([](Peer& peer) {
    peer.readRequest();
    peer.write(
        "HTTP/1.1 103 Early Hints\r\nX-Early: no\r\n\r\nHTTP/1.1 200 OK\r\nB: two\r\na:  one \r\nB: again\r\n"
        "Empty:\r\nTransfer-Encoding: chunked\r\n\r\n0\r\nX-Trailer: no\r\n\r\n");
  });
  const auto reply = exchange(get(server.url()));
  ASSERT_TRUE(reply);
  EXPECT_EQ(
      reply->headers,
      (std::vector<HttpHeader>{
          {"B", "two"}, {"a", "one"}, {"B", "again"}, {"Empty", ""}, {"Transfer-Encoding", "chunked"}}));
}

TEST(HttpAnswers, AServerThatHangsEndsInATimeout) {
  for (const char* said : {"", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhel"}) {
    LoopbackServer server([&](Peer& peer) {
      peer.readRequest();
      peer.write(said);
      peer.waitForHangUp();
    });
    for (const Duration limit : {Duration(-1), Duration(0), Duration(milliseconds(40))}) {
      EXPECT_EQ(summary(exchange(get(server.url(), limit))), "error -1001") << said << limit.count();
    }
  }

  // Also for one that waits for a connection, while others hold all there are.
  phone::PhoneObserver nobody;
  LoopbackServer deaf([](Peer& peer) { peer.waitForHangUp(); });
  CurlHttpClient client(nobody);
  std::deque<Outcome> outcomes(10);
  std::vector<Subscription> handles;
  for (auto& outcome : outcomes) {
    const auto limit = handles.size() < 9 ? milliseconds(60'000) : milliseconds(40);
    handles.push_back(client.send(get(deaf.url(), limit), outcome.done()));
  }
  EXPECT_EQ(summary(outcomes.back().wait()), "error -1001");
  EXPECT_EQ(outcomes.front().completions, 0);
}

TEST(HttpAnswers, AnEndlessAnswerIsCutOff) {
  const HttpOptions small{.extraCaFile = {}, .maxBody = 100'000, .maxHeaders = 10'000};
  const std::string some(9'000, 'x');
  const std::pair<std::string, std::string> rows[] = {
      {"HTTP/1.1 200 OK\r\n\r\n", some},
      {"HTTP/1.1 200 OK\r\n", "X: " + some + "\r\n"},
      {"", "HTTP/1.1 100 Continue\r\nX: " + some + "\r\n\r\n"},
  };
  for (const auto& [begin, again] : rows) {
    LoopbackServer server([&, &first = begin, &rest = again](Peer& peer) {
      peer.readRequest();
      peer.write(first);
      while (peer.write(rest)) continue;
    });
    EXPECT_EQ(summary(exchange(get(server.url()), small)), "error -1") << begin;
  }
  LoopbackServer exact([](Peer& peer) {
    peer.readRequest();
    peer.write(plainReply(200, std::string(100'000, 'x')));
  });
  EXPECT_EQ(summary(exchange(get(exact.url()), small)).size(), 100'005U);  // the last size that is allowed
}

}  // namespace
}  // namespace orlan::linuxphone::test
