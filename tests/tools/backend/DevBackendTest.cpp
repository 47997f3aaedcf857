#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>
#include <mutex>
#include <thread>

#include "RawClient.hpp"
#include "orlan/base/json.hpp"
#include "requests.hpp"
#include "tools/orlan/backend/DevBackend.hpp"

namespace orlan::devbackend {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class DevBackendTest : public testing::Test {
 protected:
  /// The port of a backend with these settings, watched.
  int serve(DevBackendConfig config = {}) {
    config.observer = [this](const Exchange& exchange) {
      const std::scoped_lock lock(mutex_);
      exchanges_.push_back(exchange);
    };
    auto port = backend_.start(std::move(config));
    EXPECT_TRUE(port) << port.error().description;
    return port.value_or(0);
  }

  int serveWith(std::initializer_list<const char*> faults) {
    DevBackendConfig config;
    for (const auto* text : faults) config.faults.push_back(parseFault(text).value());
    return serve(std::move(config));
  }

  Exchange lastExchange() {
    const std::scoped_lock lock(mutex_);
    return exchanges_.empty() ? Exchange{} : exchanges_.back();
  }

  std::string tell(int port, const Request& request) {
    RawClient client(port);
    client.send(wire(request));
    return client.receive();
  }

  DevBackend backend_;

 private:
  std::mutex mutex_;
  std::vector<Exchange> exchanges_;
};

TEST_F(DevBackendTest, AConnectionServesRequestAfterRequest) {
  RawClient client(serve());
  for (const auto& request :
       {good::registration(), good::tokenSync(), good::segments(), good::activity(), good::pluginActivity(),
        good::survey(), good::configuration(), good::geofenceCheck(), good::legacyConfiguration()}) {
    client.send(wire(request));
    const auto answer = client.receive();
    EXPECT_EQ(statusOf(answer), 200) << request.target << "\n" << answer;
    EXPECT_TRUE(json::parse(bodyOf(answer))) << answer;
    EXPECT_THAT(answer, HasSubstr("Content-Type: application/json\r\n"));
  }
  EXPECT_THAT(backend_.summary(),
              ElementsAre(Tally{"/api/device-registerd/create", 200, 2}, Tally{"/api/segments", 200, 1},
                          Tally{"/api/activities", 200, 1}, Tally{"/api/plugin-activity/create", 200, 1},
                          Tally{"/api/survey-response", 200, 1}, Tally{"/get-config", 200, 2},
                          Tally{"/check-geofence", 200, 1}));
}

TEST_F(DevBackendTest, AManyTimesOpenedBackendKeepsNobodyWaiting) {
  const int port = serve();
  std::vector<std::unique_ptr<RawClient>> idle;
  for (int i = 0; i < 40; ++i) {
    idle.push_back(std::make_unique<RawClient>(port));
    idle.back()->send(wire(good::legacyConfiguration()));
    EXPECT_EQ(statusOf(idle.back()->receive()), 200) << i;
  }
}

TEST_F(DevBackendTest, SaysWhatIsWrong) {
  const int port = serve();
  EXPECT_THAT(tell(port, withHeader(good::segments(), "Accept", "*/*")),
              HasSubstr(R"({"problems":["header \"Accept\": does not belong to this request"]})"));
  // An empty value is a header, too, and not the same as none.
  EXPECT_THAT(tell(port, withHeader(good::legacyConfiguration(), "x-api-key", "")),
              HasSubstr("x-api-key: empty"));
  EXPECT_THAT(lastExchange().request.headers,
              ElementsAre(Header{"Accept", "application/json"}, Header{"x-api-key", ""}));
  EXPECT_EQ(statusOf(tell(port, withHeader(good::segments(), "ApiKey", "100%41"))), 200);
  EXPECT_THAT(lastExchange().request.headers, testing::Contains(Header{"ApiKey", "100%41"})) << "as sent";
  auto elsewhere = good::legacyConfiguration();
  elsewhere.target = "/get-config%20";
  EXPECT_EQ(statusOf(tell(port, elsewhere)), 404);
  EXPECT_EQ(lastExchange().request.target, "/get-config%20");
}

TEST_F(DevBackendTest, AnUploadsBytesArriveAsSentAndEachHasABoundaryOfItsOwn) {
  const int port = serve();
  EXPECT_EQ(statusOf(tell(port, good::activity())), 200);
  EXPECT_EQ(lastExchange().request.body, good::activity().body);
  EXPECT_THAT(tell(port, good::activity()), HasSubstr("was used before"));
  EXPECT_EQ(lastExchange().status, 400);
  EXPECT_EQ(statusOf(tell(port, good::activity("Boundary-00000000-0000-4000-8000-000000000002"))), 200);
  // A content type that no multipart reader would take reaches the check, not the reader.
  const auto answer = tell(port, withHeader(good::activity(), "Content-Type", "multipart/form-data"));
  EXPECT_THAT(answer, HasSubstr("header Content-Type: expected"));
}

TEST_F(DevBackendTest, LenientAnswersAllTheSame) {
  const int port = serve({.lenient = true});
  EXPECT_EQ(statusOf(tell(port, withHeader(good::segments(), "Accept", "*/*"))), 200);
  EXPECT_THAT(lastExchange().problems, ElementsAre(HasSubstr("does not belong")));
  auto unknown = good::segments();
  unknown.target = "/";
  EXPECT_EQ(statusOf(tell(port, unknown)), 404);
}

TEST_F(DevBackendTest, FaultsStrikeAsOftenAsAsked) {
  const int port = serveWith({"/get-config=status:503*2", "/get-config=body:{\"configuration\":7}*3"});
  const auto request = good::legacyConfiguration();
  EXPECT_EQ(statusOf(tell(port, request)), 503);
  EXPECT_EQ(statusOf(tell(port, request)), 503);
  const auto third = tell(port, request);
  EXPECT_EQ(statusOf(third), 200);
  EXPECT_EQ(bodyOf(third), "{\"configuration\":7}");
  EXPECT_THAT(lastExchange().faults, ElementsAre("body:{\"configuration\":7}"));
  EXPECT_THAT(tell(port, request), HasSubstr("privacyText"));
  EXPECT_THAT(backend_.summary(), ElementsAre(Tally{"/get-config", 200, 2}, Tally{"/get-config", 503, 2}));
}

TEST_F(DevBackendTest, ConnectionsAreCutWhereAsked) {
  const int port = serveWith({"/get-config=cut*1", "/get-config=cut:12*1", "/api/segments=raw:220 mail*1",
                              "/api/segments=status:304"});
  EXPECT_EQ(tell(port, good::legacyConfiguration()), "");
  EXPECT_EQ(lastExchange().status, std::nullopt);
  RawClient client(port);
  client.send(wire(good::legacyConfiguration()));
  EXPECT_EQ(client.receive(), "HTTP/1.1 200");
  EXPECT_TRUE(client.ended());
  EXPECT_EQ(statusOf(tell(port, good::legacyConfiguration())), 200);
  EXPECT_EQ(tell(port, good::segments()), "220 mail");
  const auto unchanged = tell(port, good::segments());
  EXPECT_EQ(statusOf(unchanged), 304);
  EXPECT_EQ(bodyOf(unchanged), "");
}

TEST_F(DevBackendTest, ADelayedAnswerComesLater) {
  const int port = serveWith({"/get-config=delay:0.15"});
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(statusOf(tell(port, good::legacyConfiguration())), 200);
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(150));
}

TEST_F(DevBackendTest, StoppingEndsWhatIsDelayedOrIdle) {
  const int port = serveWith({"/get-config=delay:3000"});
  RawClient idle(port);
  RawClient halfway(port);
  halfway.send("GET /get-co");
  RawClient delayed(port);
  delayed.send(wire(good::legacyConfiguration()));
  while (backend_.summary().empty()) std::this_thread::yield();
  const auto begin = std::chrono::steady_clock::now();
  backend_.stop();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
  EXPECT_EQ(delayed.receive(), "");
  EXPECT_EQ(lastExchange().request.method, "GET") << "half a request is nothing that arrived";
}

TEST_F(DevBackendTest, OddPeersAreAnsweredAndRecorded) {
  const int port = serve();
  RawClient stranger(port);
  stranger.send("EHLO backend\r\n\r\n");
  EXPECT_EQ(statusOf(stranger.receive()), 400);
  EXPECT_THAT(lastExchange().problems, ElementsAre(HasSubstr(R"(found "EHLO backend\r\n)")));
  EXPECT_EQ(lastExchange().request.method, "");

  // A POST without a length has no body, rather than one that lasts until the peer hangs up.
  RawClient lengthless(port);
  lengthless.send("POST /api/segments HTTP/1.1\r\n\r\n");
  EXPECT_THAT(lengthless.receive(), HasSubstr("body: empty"));

  RawClient chunked(port);
  chunked.send(
      "POST /api/segments HTTP/1.1\r\nContent-Type: application/json\r\nApiKey: k\r\n"
      "Transfer-Encoding: chunked\r\n\r\n3b\r\n{\"segmentation\":[],\"device_registered_id\":"
      "\"chunks-of-text\"}\r\n0\r\n\r\n");
  EXPECT_EQ(statusOf(chunked.receive()), 200);

  RawClient getter(port);
  auto withBody = withHeader(good::legacyConfiguration(), "Content-Length", "2");
  withBody.body = "{}";
  getter.send(wire(withBody));
  EXPECT_THAT(getter.receive(), HasSubstr("body: expected none"));
  getter.send(wire(good::legacyConfiguration()));
  EXPECT_EQ(statusOf(getter.receive()), 200) << "the body was no second request";
}

TEST_F(DevBackendTest, TheRecordHoldsEverythingThatArrived) {
  const auto path = std::filesystem::path(testing::TempDir()) / "orlan-devbackend-record.jsonl";
  std::ofstream(path) << "from an earlier run\n";
  const int port = serve({.recordFile = path.string()});
  tell(port, good::surveyEvent());
  auto binary = good::segments();
  binary.body[0] = '\xff';
  tell(port, binary);
  std::ifstream file(path);
  std::vector<json::Value> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(json::parse(line).value());
  ASSERT_EQ(lines.size(), 2U);
  const auto& first = *lines[0].object();
  EXPECT_EQ(*first.find("id"), json::Value(1));
  EXPECT_EQ(*first.find("method"), json::Value("POST"));
  EXPECT_EQ(*first.find("path"), json::Value("/api/survey-response"));
  EXPECT_EQ(first.find("headers")->array()->at(3), json::Value(json::Array{"ApiKey", "key-1"}));
  EXPECT_EQ(*first.find("body"), json::Value(good::surveyEvent().body));
  EXPECT_EQ(*first.find("status"), json::Value(200));
  EXPECT_EQ(*first.find("problems"), json::Value(json::Array{}));
  const auto& second = *lines[1].object();
  EXPECT_THAT(*second.find("bodyBase64")->string(), testing::StartsWith("/y"));
  EXPECT_EQ(*second.find("status"), json::Value(400));
  EXPECT_EQ(second.find("problems")->array()->size(), 1U);
  std::filesystem::remove(path);
}

TEST_F(DevBackendTest, APortBelongsToOneBackend) {
  const int port = serve();
  DevBackend second;
  const auto refused = second.start({.port = port});
  ASSERT_FALSE(refused);
  EXPECT_THAT(refused.error().description, HasSubstr(std::to_string(port)));
  backend_.stop();
  DevBackend third;
  EXPECT_TRUE(third.start({.port = port})) << "free again at once";
}

TEST_F(DevBackendTest, ManyAskAtOnce) {
  const int port = serveWith({"/api/device-registerd/create=delay:0.001"});
  std::vector<std::future<std::string>> answers;
  for (int i = 0; i < 16; ++i) {
    answers.push_back(std::async(std::launch::async, [&, i] {
      auto request = edited(good::registration(), "9F8E7D6C", i % 2 == 0 ? "AAAAAAAA" : "BBBBBBBB");
      return std::string(bodyOf(tell(port, request)));
    }));
  }
  std::set<std::string> identities;
  for (auto& answer : answers) identities.insert(answer.get());
  EXPECT_EQ(identities.size(), 2U) << "a device keeps its identity";
  EXPECT_THAT(backend_.summary(), ElementsAre(Tally{"/api/device-registerd/create", 200, 16}));
}

}  // namespace
}  // namespace orlan::devbackend
