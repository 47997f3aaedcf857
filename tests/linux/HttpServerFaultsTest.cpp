#include <deque>
#include <string>
#include <vector>

#include "linux/HttpFixture.hpp"

// Whatever the server does, a request is answered exactly once (`exchange` checks that) and truthfully.
namespace orlan::linuxphone::test {
namespace {

using std::chrono::milliseconds;

TEST(HttpAnswers, AreWhatTheServerSaid) {
  const std::string chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
  const struct {
    const char* name;
    std::string bytes;
    std::string expected;
  } rows[] = {
      {"with length", plainReply(200, "hello"), "200: hello"},
      {"any status", plainReply(418, "teapot"), "418: teapot"},
      {"length zero", plainReply(200, ""), "200: "},
      {"ended by closing", "HTTP/1.1 200 OK\r\n\r\nhello", "200: hello"},
      {"nothing before closing", "HTTP/1.1 200 OK\r\n\r\n", "200: "},
      {"old version", "HTTP/1.0 200 OK\r\n\r\nhello", "200: hello"},
      {"no reason", "HTTP/1.1 200\r\nContent-Length: 2\r\n\r\nhi", "200: hi"},
      {"no content", "HTTP/1.1 204 No Content\r\n\r\n", "204 without a body"},
      {"not modified", "HTTP/1.1 304 Not Modified\r\nContent-Length: 5\r\n\r\n", "304 without a body"},
      {"chunked", chunked + "3\r\nhel\r\n2\r\nlo\r\n0\r\n\r\n", "200: hello"},
      {"chunked, empty", chunked + "0\r\n\r\n", "200: "},
      {"chunked, cut off", chunked + "5\r\nhel", "error -1"},
      {"chunked, nonsense", chunked + "hello", "error -1"},
      {"interim answers first",
       "HTTP/1.1 103 Early Hints\r\nX: early\r\n\r\nHTTP/1.1 100 Continue\r\n\r\n" + plainReply(200, "hello"),
       "200: hello"},
      {"only an interim answer", "HTTP/1.1 100 Continue\r\n\r\n", "error -1"},
      {"shorter than announced", "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhello", "error -1"},
      {"impossible length", "HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\nhello", "error -1011"},
      {"redirect", "HTTP/1.1 302 Found\r\nLocation: /elsewhere\r\nContent-Length: 0\r\n\r\n", "302: "},
      {"nothing at all", "", "error -1"},
      {"another protocol", "SSH-2.0-OpenSSH_9.2\r\n", "no HTTP"},
      {"a bare text", "hello", "no HTTP"},
      {"binary", std::string("\0\xff\x15\x03\x01\0\x02\x02", 8), "no HTTP"},
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
  const struct {
    const char* name;
    std::string bytes;
  } rows[] = {
      {"at once", ""},
      {"in the status line", "HTTP/1.1 2"},
      {"in the headers", "HTTP/1.1 200 OK\r\nContent-"},
      {"in the body", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhel"},
      {"after an interim answer", "HTTP/1.1 100 Continue\r\n\r\n"},
  };
  for (const auto& row : rows) {
    LoopbackServer server([&](Peer& peer) {
      peer.readRequest();
      peer.write(row.bytes);
      peer.waitForHangUp();
    });
    EXPECT_EQ(summary(exchange(get(server.url(), milliseconds(40)))), "error -1001") << row.name;
  }

  // Also for one that waits for a connection, while others hold all there are.
  phone::PhoneObserver nobody;
  LoopbackServer deaf([](Peer& peer) { peer.waitForHangUp(); });
  for (const Duration noTime : {Duration(0), Duration(-1), Duration(1)}) {
    EXPECT_EQ(summary(exchange(get(deaf.url(), noTime))), "error -1001") << noTime.count();
  }
  CurlHttpClient client(nobody);
  std::deque<Outcome> outcomes(10);
  std::vector<Subscription> handles;
  for (auto& outcome : outcomes) {
    const auto limit = handles.size() < 9 ? milliseconds(60'000) : milliseconds(40);
    handles.push_back(client.send(get(deaf.url(), limit), outcome.done()));
  }
  EXPECT_EQ(summary(outcomes.back().wait()), "error -1001");
  EXPECT_EQ(outcomes.front().completions(), 0);
}

TEST(HttpAnswers, AConnectionCutAtAnyByteNeverPassesForAnAnswer) {
  const std::string whole = "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello";
  for (const bool hard : {false, true}) {
    for (std::size_t length = 0; length < whole.size(); ++length) {
      LoopbackServer server([&](Peer& peer) {
        peer.readRequest();
        peer.write(whole.substr(0, length));
        if (hard) peer.reset();
      });
      const auto result = exchange(get(server.url()));
      EXPECT_FALSE(result && result->status) << "after " << length << " bytes: " << summary(result);
    }
  }
}

TEST(HttpAnswers, AnEndlessAnswerIsCutOff) {
  const HttpOptions small{.extraCaFile = {}, .maxBody = 100'000, .maxHeaders = 10'000};
  const std::string some(9'000, 'x');
  const struct {
    const char* name;
    std::string first;
    std::string again;
  } rows[] = {
      {"body", "HTTP/1.1 200 OK\r\n\r\n", some},
      {"announced body", "HTTP/1.1 200 OK\r\nContent-Length: 999999999999\r\n\r\n", some},
      {"headers", "HTTP/1.1 200 OK\r\n", "X: " + some + "\r\n"},
      {"one header", "HTTP/1.1 200 OK\r\nX: ", some},
      {"interim answers", "", "HTTP/1.1 100 Continue\r\nX: " + some + "\r\n\r\n"},
  };
  for (const auto& row : rows) {
    LoopbackServer server([&](Peer& peer) {
      peer.readRequest();
      peer.write(row.first);
      while (peer.write(row.again)) continue;
    });
    EXPECT_EQ(summary(exchange(get(server.url()), small)), "error -1") << row.name;
  }
  LoopbackServer exact([](Peer& peer) {
    peer.readRequest();
    peer.write(plainReply(200, std::string(100'000, 'x')));
  });
  EXPECT_EQ(summary(exchange(get(exact.url()), small)).size(), 100'005U);  // the last size that is allowed
}

}  // namespace
}  // namespace orlan::linuxphone::test
