#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <optional>
#include <string>

#include "orlan/platform/Platform.hpp"
#include "phones/common/PhoneObserver.hpp"

namespace orlan {

template <class Phone>
class HttpContract : public ::testing::Test {
 protected:
  /// What `done` was given, once it was called.
  struct Exchange {
    std::atomic<int> calls = 0;
    std::mutex mutex;
    std::optional<Result<HttpReply>> result;
    bool onMain = false;
    Subscription handle;
  };

  HttpRequest get(const std::string& url, Duration timeout = std::chrono::seconds(5)) const {
    return {"GET", url, {}, std::nullopt, timeout};
  }

  void send(Exchange& exchange, HttpRequest request) {
    exchange.handle = http.send(std::move(request), [&](Result<HttpReply> result) {
      const std::lock_guard lock(exchange.mutex);
      exchange.result = std::move(result);
      exchange.onMain = main.isCurrent();
      ++exchange.calls;
    });
  }

  /// Waits for the completion and looks a little longer for a second one.
  Result<HttpReply> outcome(Exchange& exchange) {
    if (!phone.runUntil([&] { return exchange.calls > 0; }))
      return Unexpected(Error{"never", 0, "completed"});
    phone.pass(std::chrono::milliseconds(2));
    EXPECT_EQ(exchange.calls, 1);
    EXPECT_FALSE(exchange.onMain);
    const std::lock_guard lock(exchange.mutex);
    return *exchange.result;
  }
  Result<HttpReply> outcome(HttpRequest request) {
    Exchange exchange;
    send(exchange, std::move(request));
    return outcome(exchange);
  }

  Phone phone;
  MainLoop& main = phone.platform().main;
  HttpClient& http = phone.platform().http;
};
TYPED_TEST_SUITE_P(HttpContract);

TYPED_TEST_P(HttpContract, EveryStatusIsAnAnswer) {
  for (const int status : {200, 201, 302, 404, 500}) {
    const std::string path = "/status/" + std::to_string(status);
    this->phone.serve(path, status, "body of " + std::to_string(status), Duration::zero());
    const auto reply = this->outcome(this->get(this->phone.url(path)));
    ASSERT_TRUE(reply) << status << ": " << reply.error().description;
    EXPECT_EQ(reply->status, status);
    EXPECT_EQ(reply->body, "body of " + std::to_string(status));
  }
}

TYPED_TEST_P(HttpContract, TransportFaultsHaveTheirErrors) {
  this->phone.serve("/slow", 200, "too late", std::chrono::seconds(3));
  const std::string fine = this->phone.url("/x");
  const struct {
    const char* name;
    HttpRequest request;
    std::int64_t code;
  } rows[] = {
      {"past its timeout", this->get(this->phone.url("/slow"), std::chrono::milliseconds(30)),
       urlErrors::timedOut().code},
      {"nobody listens", this->get(this->phone.unreachableUrl()), urlErrors::cannotConnectToHost().code},
      {"no URL", this->get("not a url"), urlErrors::badURL().code},
      {"another scheme", this->get("file:///etc/hostname"), urlErrors::badURL().code},
      {"plain http abroad", this->get("http://example.com/"), urlErrors::badURL().code},
      {"line break in the URL", this->get(fine + "\r\nX: y"), urlErrors::badURL().code},
      {"line break in a header", {"GET", fine, {{"A", "b\r\nC: d"}}}, urlErrors::other("").code},
      {"line break in a header's name", {"GET", fine, {{"A\r\nB", "c"}}}, urlErrors::other("").code},
      {"blank in the method", {"GET /y", fine, {}}, urlErrors::other("").code},
  };
  for (const auto& row : rows) {
    const auto result = this->outcome(row.request);
    ASSERT_FALSE(result) << row.name;
    EXPECT_EQ(this->http.isUrl(row.request.url), row.code != urlErrors::badURL().code) << row.name;
    EXPECT_EQ(result.error().domain, "URLError") << row.name;
    EXPECT_EQ(result.error().code, row.code) << row.name << ": " << result.error().description;
  }
}

TYPED_TEST_P(HttpContract, ADestroyedHandleNeverCompletes) {
  this->phone.serve("/soon", 200, "x", std::chrono::milliseconds(5));
  typename TestFixture::Exchange exchange;
  for (int i = 0; i < 20; ++i) {
    this->send(exchange, this->get(this->phone.url("/soon")));
    if (i % 2 == 1) this->phone.pass(std::chrono::milliseconds(1));
    exchange.handle.cancel();
  }
  const int calls = exchange.calls;  // a few may have come before their handle's end
  this->phone.pass(std::chrono::milliseconds(30));
  EXPECT_EQ(exchange.calls, calls);
}

TYPED_TEST_P(HttpContract, TheCompletionMayDestroyItsHandle) {
  this->phone.serve("/x", 200, "x", Duration::zero());
  struct {
    std::mutex mutex;
    Subscription handle;
  } held;
  std::atomic<bool> finished = false;
  {
    const std::lock_guard lock(held.mutex);
    held.handle = this->http.send(this->get(this->phone.url("/x")), [&](const Result<HttpReply>&) {
      const std::lock_guard inside(held.mutex);
      held.handle.cancel();
      finished = true;
    });
  }
  EXPECT_TRUE(this->phone.runUntil([&] { return finished.load(); }));
}

TYPED_TEST_P(HttpContract, RequestsAndResponsesAreSeenUnderOneNumber) {
  struct Watcher : phone::PhoneObserver {
    void request(phone::RequestId id, const HttpRequest& sent) override {
      add(id, sent.url.substr(sent.url.rfind('/')));
    }
    void response(phone::RequestId id, const Result<HttpReply>& got) override {
      add(id, got && got->status ? std::to_string(*got->status) : "error");
    }
    void add(phone::RequestId id, const std::string& what) {
      const std::lock_guard lock(mutex);
      seen[id] += what + " ";
    }
    std::mutex mutex;
    std::map<phone::RequestId, std::string> seen;
  } watcher;
  this->phone.observe(watcher);
  this->phone.serve("/one", 200, "x", std::chrono::milliseconds(5));
  this->phone.serve("/two", 404, "x", Duration::zero());
  typename TestFixture::Exchange one, two, dropped, refused;
  this->send(one, this->get(this->phone.url("/one")));
  this->send(two, this->get(this->phone.url("/two")));
  this->send(refused, this->get("nonsense"));
  this->send(dropped, this->get(this->phone.url("/one")));
  dropped.handle.cancel();
  (void)this->outcome(one);
  (void)this->outcome(two);
  (void)this->outcome(refused);
  this->phone.pass(std::chrono::milliseconds(20));
  const std::lock_guard lock(watcher.mutex);
  EXPECT_EQ(watcher.seen,
            (std::map<phone::RequestId, std::string>{{1, "/one 200 "}, {2, "/two 404 "}, {3, "/one "}}));
}

REGISTER_TYPED_TEST_SUITE_P(HttpContract, EveryStatusIsAnAnswer, TransportFaultsHaveTheirErrors,
                            ADestroyedHandleNeverCompletes, TheCompletionMayDestroyItsHandle,
                            RequestsAndResponsesAreSeenUnderOneNumber);

}  // namespace orlan
