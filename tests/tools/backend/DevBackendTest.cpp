#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <future>

#include "linux/TemporaryDirectory.hpp"
#include "phones/linux/FileDescriptor.hpp"
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

/// A connection on which these bytes were sent.
linuxphone::FileDescriptor connection(int port, std::string_view bytes) {
  linuxphone::FileDescriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const timeval patience{.tv_sec = 10, .tv_usec = 0};
  ::setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  EXPECT_EQ(::connect(socket.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(::send(socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL), std::ssize(bytes));
  return socket;
}

/// All that comes on it until its end; for ten seconds at most, which only a fault can need.
std::string received(const linuxphone::FileDescriptor& socket) {
  std::string all;
  for (std::array<char, 4096> chunk;;) {
    const auto count = ::recv(socket.get(), chunk.data(), chunk.size(), 0);
    EXPECT_GE(count, 0) << "no answer and no end";
    if (count <= 0) return all;
    all.append(chunk.data(), static_cast<std::size_t>(count));
  }
}

/// What a connection of its own is answered to these bytes, after which nothing more is sent.
std::string ask(int port, std::string_view bytes) {
  const auto socket = connection(port, bytes);
  ::shutdown(socket.get(), SHUT_WR);
  return received(socket);
}

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

TEST_F(DevBackendTest, AConnectionServesRequestAfterRequestWhileOthersAreIdle) {
  const int port = serve();
  std::vector<linuxphone::FileDescriptor> idle;
  while (idle.size() < 20) idle.push_back(connection(port, ""));
  std::string requests;
  for (const auto& request : {good::registration, good::registration, good::segments, good::activity,
                              good::pluginActivity, good::survey, good::configuration, good::geofenceCheck}) {
    requests += wire(request);
  }
  EXPECT_THAT(ask(port, requests), AllOf(StartsWith("HTTP/1.1 200 \r\nContent-Type: application/json\r\n"),
                                         HasSubstr("\r\n\r\n{")));
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
  const int port =
      serveWith({"/get-config=status:503*1", "/get-config=status:500*1", "/api//get-config=body:a=b:c*d*3",
                 "/get-config=delay:0.1*1", "/check-geofence=cut*1", "/check-geofence=cut:12*1",
                 "/api/segments=raw:220 mail*1", "/api/survey-response=status:304"});
  const auto request = wire(good::legacyConfiguration);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_THAT(ask(port, request), StartsWith("HTTP/1.1 503"));
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(100));
  EXPECT_THAT(ask(port, request), StartsWith("HTTP/1.1 500"));
  EXPECT_THAT(ask(port, request), EndsWith("\r\n\r\na=b:c*d"));
  EXPECT_THAT(last().faults, ElementsAre("body:a=b:c*d"));
  EXPECT_THAT(ask(port, request), HasSubstr("privacyText"));
  EXPECT_EQ(ask(port, wire(good::geofenceCheck)), "");
  EXPECT_EQ(last().status, std::nullopt);
  EXPECT_EQ(ask(port, wire(good::geofenceCheck)), "HTTP/1.1 200");
  EXPECT_EQ(ask(port, wire(good::segments)), "220 mail");
  EXPECT_THAT(ask(port, wire(good::survey)), AllOf(StartsWith("HTTP/1.1 304"), EndsWith(" 0\r\n\r\n")));
}

TEST_F(DevBackendTest, StoppingEndsWhatIsDelayedOrIdle) {
  const int port = serveWith({"/get-config=delay:3000"});
  const auto idle = connection(port, "");
  const auto halfway = connection(port, "GET /get-co");
  const auto delayed = connection(port, wire(good::legacyConfiguration));
  while (backend_->summary().empty()) std::this_thread::yield();
  const auto begin = std::chrono::steady_clock::now();
  backend_->stop();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
  EXPECT_EQ(received(delayed), "");
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

  EXPECT_THAT(
      ask(port, "GET /get-config HTTP/1.1\r\nContent-Length: 2\r\n\r\n{}" + wire(good::legacyConfiguration) +
                    "POST /api/segments HTTP/1.1\r\nExpect: 100-continue\r\nContent-Length: 0\r\n\r\n"
                    "HEAD /get-config HTTP/1.0\r\n\r\n"),
      AllOf(StartsWith("HTTP/1.1 401"), HasSubstr("body: expected none"),
            HasSubstr("}HTTP/1.1 200"),  // the body was no second request
            HasSubstr("}HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 401"), HasSubstr("}HTTP/1.1 405"),
            EndsWith("Connection: close\r\n\r\n")));
}

TEST_F(DevBackendTest, TheRecordHoldsEverythingThatArrivedAndIsItsOwnersAlone) {
  const linuxphone::test::TemporaryDirectory directory;
  const auto path = directory.file("record.jsonl");
  std::ofstream(path) << "from an earlier run\n";
  fs::permissions(path, fs::perms::all);
  std::ifstream reader(path);  // who had it open sees nothing of the new one
  const int port = serve({.recordFile = path});
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

  fs::create_symlink(path, directory.file("link"));
  DevBackend refused({.recordFile = directory.file("link")});
  EXPECT_THAT(refused.start().error().description, HasSubstr("link: cannot be written: is a link"));
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
