#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <future>

#include "RawClient.hpp"
#include "orlan/base/json.hpp"
#include "requests.hpp"
#include "tools/orlan/backend/DevBackend.hpp"

namespace orlan::devbackend {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;

class DevBackendTest : public testing::Test {
 protected:
  /// The port of a backend with these settings, watched.
  int serve(DevBackendConfig config = {}) {
    config.observer = [this](const Exchange& exchange) {
      const std::scoped_lock lock(mutex_);
      last_ = exchange;
    };
    backend_ = std::make_unique<DevBackend>(std::move(config));
    auto port = backend_->start();
    EXPECT_TRUE(port) << port.error().description;
    return port.value_or(0);
  }

  int serveWith(std::initializer_list<const char*> faults) {
    DevBackendConfig config;
    for (const auto* text : faults) config.faults.push_back(parseFault(text).value());
    return serve(std::move(config));
  }

  Exchange last() {
    const std::scoped_lock lock(mutex_);
    return last_;
  }

 private:
  std::mutex mutex_;
  Exchange last_;

 protected:
  std::unique_ptr<DevBackend> backend_;
};

TEST_F(DevBackendTest, AConnectionServesRequestAfterRequest) {
  const int port = serve();
  std::vector<std::unique_ptr<RawClient>> idle;
  for (int i = 0; i < 20; ++i) idle.push_back(std::make_unique<RawClient>(port));
  RawClient client(port);
  for (const auto& request : {good::registration, good::registration, good::segments, good::activity,
                              good::pluginActivity, good::survey, good::configuration, good::geofenceCheck}) {
    client.send(wire(request));
    EXPECT_THAT(client.receive(), AllOf(StartsWith("HTTP/1.1 200"), HasSubstr("Type: application/json\r\n"),
                                        HasSubstr("\r\n\r\n{")));
    EXPECT_EQ(last().request.body, requestOf(request).body);
  }
  EXPECT_THAT(backend_->summary(),
              ElementsAre(Tally{"/api/device-registerd/create", 200, 2}, Tally{"/api/segments", 200, 1},
                          Tally{"/api/activities", 200, 1}, Tally{"/api/plugin-activity/create", 200, 1},
                          Tally{"/api/survey-response", 200, 1}, Tally{"/get-config", 200, 1},
                          Tally{"/check-geofence", 200, 1}));
}

TEST_F(DevBackendTest, WhatArrivesIsSeenAsItWasSent) {
  const int port = serve();
  EXPECT_THAT(ask(port, wire(edited(good::segments, "[\"gold\",\"evening\"]", "\"\""))),
              AllOf(StartsWith("HTTP/1.1 400 "),
                    EndsWith(R"({"problems":["body.segmentation: expected an array, found a string"]})")));
  EXPECT_THAT(ask(port, wire(edited(good::legacyConfiguration, "key-1", ""))), StartsWith("HTTP/1.1 401"));
  EXPECT_THAT(last().request.headers, Contains(Header{"x-api-key", ""})) << "not the same as none";
  EXPECT_THAT(ask(port, wire(edited(good::segments, "key-1", "100%41"))), StartsWith("HTTP/1.1 200"));
  EXPECT_THAT(last().request.headers, Contains(Header{"ApiKey", "100%41"}));
  ask(port, wire(edited(good::legacyConfiguration, "config", "config%20")));
  EXPECT_EQ(last().request.target, "/get-config%20");
  EXPECT_EQ(last().status, 404);
  EXPECT_THAT(ask(port, wire(good::activity)), StartsWith("HTTP/1.1 200"));
  EXPECT_THAT(ask(port, wire(good::activity)), HasSubstr("was used before"));
}

TEST_F(DevBackendTest, LenientAnswersAllTheSame) {
  const int port = serve({.lenient = true});
  EXPECT_THAT(ask(port, wire(edited(good::segments, "gold", "gold\",\""))), StartsWith("HTTP/1.1 200"));
  EXPECT_THAT(ask(port, wire(edited(good::segments, "ApiKey", "Api"))), StartsWith("HTTP/1.1 200"));
  EXPECT_THAT(last().problems, Contains(HasSubstr("does not belong")));
  EXPECT_THAT(ask(port, wire(edited(good::segments, "segments", "s"))), StartsWith("HTTP/1.1 404"));
}

TEST_F(DevBackendTest, FaultsStrikeAsOftenAsAsked) {
  const int port = serveWith({"/get-config=status:503*1", "/get-config=status:500*1",
                              "/get-config=body:{\"configuration\":7}*3", "/get-config=delay:0.1*1",
                              "/check-geofence=cut*1", "/check-geofence=cut:12*1",
                              "/api/segments=raw:220 mail*1", "/api/survey-response=status:304"});
  const auto request = wire(good::legacyConfiguration);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_THAT(ask(port, request), StartsWith("HTTP/1.1 503"));
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(100));
  EXPECT_THAT(ask(port, request), StartsWith("HTTP/1.1 500"));
  EXPECT_THAT(ask(port, request), EndsWith("\r\n\r\n{\"configuration\":7}"));
  EXPECT_THAT(last().faults, ElementsAre("body:{\"configuration\":7}"));
  EXPECT_THAT(ask(port, request), HasSubstr("privacyText"));
  EXPECT_EQ(ask(port, wire(good::geofenceCheck)), "");
  EXPECT_EQ(last().status, std::nullopt);
  EXPECT_EQ(ask(port, wire(good::geofenceCheck)), "HTTP/1.1 200");
  EXPECT_EQ(ask(port, wire(good::segments)), "220 mail");
  EXPECT_THAT(ask(port, wire(good::survey)), AllOf(StartsWith("HTTP/1.1 304"), EndsWith(" 0\r\n\r\n")));
}

TEST_F(DevBackendTest, StoppingEndsWhatIsDelayedOrIdle) {
  const int port = serveWith({"/get-config=delay:3000"});
  RawClient idle(port);
  RawClient halfway(port);
  halfway.send("GET /get-co");
  RawClient delayed(port);
  delayed.send(wire(good::legacyConfiguration));
  while (backend_->summary().empty()) std::this_thread::yield();
  const auto begin = std::chrono::steady_clock::now();
  backend_->stop();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
  EXPECT_EQ(delayed.receive(), "");
  EXPECT_EQ(last().request.method, "GET") << "half a request is nothing that arrived";
  EXPECT_TRUE(DevBackend({.port = port}).start()) << "the port is free again at once";
}

TEST_F(DevBackendTest, OddPeersAreAnsweredAndRecorded) {
  const int port = serve();
  EXPECT_THAT(ask(port, "GET /get-config HTTP/1.1\n\n"), StartsWith("HTTP/1.1 400"));
  EXPECT_THAT(ask(port, "EHLO backend\r\n"), StartsWith("HTTP/1.1 400"));
  EXPECT_THAT(last().problems, ElementsAre(HasSubstr(R"(found "EHLO backend\r\n")")));
  EXPECT_EQ(last().request.method, "");
  // A POST without a length has no body, rather than one that lasts until the peer hangs up.
  EXPECT_THAT(ask(port, "POST /api/segments HTTP/1.1\r\n\r\n"), HasSubstr("body: empty"));
  const std::string chunked =
      "POST /api/segments HTTP/1.1\r\nContent-Type: application/json\r\nApiKey: k\r\n"
      "Transfer-Encoding: chunked\r\n\r\n";
  EXPECT_THAT(ask(port, chunked + "20;a=b\r\n{\"segmentation\":[],\"device_regis\r\n"
                                  "1B\r\ntered_id\":\"chunks-of-text\"}\r\n0\r\nTrailer: a\r\n\r\n"),
              StartsWith("HTTP/1.1 200"));
  EXPECT_THAT(ask(port, chunked + "nonsense\r\n"), HasSubstr("body: too large, or broken off"));
  EXPECT_THAT(ask(port, "POST /api/segments HTTP/1.1\r\nContent-Length: -1\r\n\r\n"),
              HasSubstr("broken off"));

  RawClient getter(port);
  getter.send("GET /get-config HTTP/1.1\r\nContent-Length: 2\r\n\r\n{}" + wire(good::legacyConfiguration));
  EXPECT_THAT(getter.receive(), HasSubstr("body: expected none"));
  EXPECT_THAT(getter.receive(), StartsWith("HTTP/1.1 200")) << "the body was no second request";
  getter.send("POST /api/segments HTTP/1.1\r\nExpect: 100-continue\r\nContent-Length: 0\r\n\r\n");
  EXPECT_EQ(getter.receive(), "HTTP/1.1 100 Continue\r\n\r\n");
  EXPECT_THAT(getter.receive(), StartsWith("HTTP/1.1 401"));
  getter.send("HEAD /get-config HTTP/1.0\r\n\r\n");
  EXPECT_THAT(getter.receive(), AllOf(StartsWith("HTTP/1.1 405"), EndsWith("Connection: close\r\n\r\n")));
}

TEST_F(DevBackendTest, TheRecordHoldsEverythingThatArrivedAndIsItsOwnersAlone) {
  const auto path = fs::path(testing::TempDir()) / "orlan-devbackend-record.jsonl";
  std::ofstream(path) << "from an earlier run\n";
  fs::permissions(path, fs::perms::all);
  std::ifstream reader(path);  // who had it open sees nothing of the new one
  const int port = serve({.recordFile = path.string()});
  ask(port, wire(good::survey));
  ask(port, wire(edited(good::segments, "{", "\xff")));
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "from an earlier run\n");

  std::ifstream file(path);
  std::string line;
  std::getline(file, line);
  EXPECT_THAT(line,
              AllOf(StartsWith(R"({"id":1,"at":0.)"), HasSubstr(R"("path":"/api/survey-response")"),
                    HasSubstr(R"(["ApiKey","key-1"])"), HasSubstr(R"(,"body":"{\"device_registered_id)"),
                    EndsWith(R"("status":200,"faults":[],"problems":[]})")));
  std::getline(file, line);
  EXPECT_THAT(line, AllOf(HasSubstr(R"("bodyBase64":"/y)"), HasSubstr(R"("status":400)")));

  const auto link = fs::path(testing::TempDir()) / "orlan-devbackend-link.jsonl";
  fs::create_symlink(path, link);
  DevBackend refused({.recordFile = link.string()});
  EXPECT_THAT(refused.start().error().description, HasSubstr("link.jsonl: cannot be written: is a link"));
  fs::remove(link);
  fs::remove(path);
}

TEST_F(DevBackendTest, ManyAskAtOnceAndADeviceKeepsItsIdentity) {
  const int port = serve();
  std::vector<std::future<std::string>> answers;
  for (int i = 0; i < 16; ++i) {
    answers.push_back(std::async(std::launch::async, [port, i] {
      return ask(port, wire(edited(good::registration, "9F8E7D6C", i % 2 == 0 ? "AAAAAAAA" : "BBBBBBBB")));
    }));
  }
  std::set<std::string> identities;
  for (auto& answer : answers) identities.insert(answer.get());
  EXPECT_EQ(identities.size(), 2U);
  EXPECT_THAT(*identities.begin(), HasSubstr(R"({"data":{"device_id":"device-AAAAAAAA-)"));
}

}  // namespace
}  // namespace orlan::devbackend
