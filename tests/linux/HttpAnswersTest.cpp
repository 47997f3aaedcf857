#include <string>
#include <utility>
#include <vector>

#include "linux/HttpFixture.hpp"

// Whatever the server does, a request is answered exactly once (`Client` checks that) and truthfully.
namespace orlan::linuxphone::test {
namespace {

using std::chrono::milliseconds;

/// Says the same to every request.
LoopbackServer::Script saying(const std::string& bytes) {
  return [bytes](Peer& peer) {
    peer.readRequest();
    peer.write(bytes);
  };
}

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
      {"only an interim answer", "HTTP/1.1 100 Continue\r\n\r\n", "URLError -1"},
      {"cut off in the status", "HTTP/1.1 20", "URLError -1"},
      {"cut off in the headers", "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n", "URLError -1"},
      {"cut off in the body", "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhello", "URLError -1"},
      {"chunked, cut off", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhel", "URLError -1"},
      {"impossible length", "HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\nhello", "URLError -1011"},
      {"redirect", "HTTP/1.1 302 Found\r\nLocation: /elsewhere\r\nContent-Length: 0\r\n\r\n", "302: "},
      {"nothing at all", "", "URLError -1"},
      {"another protocol", "SSH-2.0-OpenSSH_9.2\r\n", "no HTTP"},
  };
  for (const auto& row : rows) {
    LoopbackServer server(saying(row.bytes));
    EXPECT_EQ(exchange(get(server.url())), row.expected) << row.name;
    EXPECT_EQ(server.connections(), 1) << row.name;  // no second try, no redirect
  }
}

TEST(HttpAnswers, CarryTheHeadersOfTheFinalAnswerInTheirOrder) {
  LoopbackServer server(saying(
      "HTTP/1.1 103 Early Hints\r\nX-Early: no\r\n\r\nHTTP/1.1 200 OK\r\nB: two\r\na:  one \r\nB: again\r\n"
      "Empty:\r\nTransfer-Encoding: chunked\r\n\r\n0\r\nX-Trailer: no\r\n\r\n"));
  Client client;
  const auto reply = client.send(get(server.url())).wait();
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
      EXPECT_EQ(exchange(get(server.url(), limit)), "URLError -1001") << said << limit.count();
    }
  }

  // Also for one that waits for a connection, while others hold all there are.
  LoopbackServer deaf([](Peer& peer) { peer.waitForHangUp(); });
  Client client;
  for (int i = 0; i < 9; ++i) client.send(get(deaf.url(), milliseconds(60'000)));
  EXPECT_EQ(client.exchange(get(deaf.url(), milliseconds(40))), "URLError -1001");
  EXPECT_EQ(client.outcomes.front().completions, 0);
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
    EXPECT_EQ(exchange(get(server.url()), small), "URLError -1") << begin;
  }
  const std::string last(100'000, 'x');  // the last size that is allowed
  LoopbackServer exact(saying(plainReply(200, last)));
  EXPECT_EQ(exchange(get(exact.url()), small), "200: " + last);
}

}  // namespace
}  // namespace orlan::linuxphone::test
