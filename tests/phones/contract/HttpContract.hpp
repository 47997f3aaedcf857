#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "orlan/platform/Platform.hpp"
#include "phones/common/PhoneObserver.hpp"
#include "tests/phones/contract/HttpOutcome.hpp"

namespace orlan {

template <class Phone>
class HttpContract : public ::testing::Test {
 protected:
  static HttpRequest get(const std::string& url, Duration timeout = std::chrono::seconds(5)) {
    return {"GET", url, {}, std::nullopt, timeout};
  }
  void send(test::HttpOutcome& outcome, HttpRequest request) {
    outcome.handle = http.send(std::move(request), [this, done = outcome.done()](Result<HttpReply> result) {
      EXPECT_FALSE(main.isCurrent());
      done(std::move(result));
    });
  }

  /// Waits for the completion and looks a little longer for a second one.
  std::string ended(test::HttpOutcome& outcome) {
    if (!phone.runUntil([&] { return outcome.completions > 0; })) return "never";
    phone.pass(std::chrono::milliseconds(2));
    EXPECT_EQ(outcome.completions, 1);
    return test::summary(outcome.wait());
  }
  std::string exchange(const HttpRequest& request) {
    test::HttpOutcome outcome;
    send(outcome, request);
    return ended(outcome);
  }

  Phone phone;
  MainLoop& main = phone.platform().main;
  HttpClient& http = phone.platform().http;
};
TYPED_TEST_SUITE_P(HttpContract);

TYPED_TEST_P(HttpContract, EveryStatusIsAnAnswer) {
  for (const int status : {200, 201, 302, 404, 500}) {
    const std::string path = "/status/" + std::to_string(status);
    this->phone.serve(path, status, "body", Duration::zero());
    EXPECT_EQ(this->exchange(this->get(this->phone.url(path))), std::to_string(status) + ": body");
  }
}

TYPED_TEST_P(HttpContract, TransportFaultsHaveTheirErrors) {
  this->phone.serve("/slow", 200, "too late", std::chrono::seconds(3));
  const std::string fine = this->phone.url("/x");
  const std::pair<HttpRequest, std::string> rows[] = {
      {this->get(this->phone.url("/slow"), std::chrono::milliseconds(30)), "URLError -1001"},
      {this->get(this->phone.unreachableUrl()), "URLError -1004"},
      {this->get("not a url"), "URLError -1000"},
      {this->get("file:///etc/hostname"), "URLError -1000"},
      {this->get("http://example.com/"), "URLError -1000"},
      {this->get(fine + "\r\nX: y"), "URLError -1000"},
      {{"GET", fine, {{"A", "b\r\nC: d"}}}, "URLError -1"},
  };
  for (const auto& [request, expected] : rows) {
    EXPECT_EQ(this->exchange(request), expected) << request.url;
    EXPECT_EQ(this->http.isUrl(request.url), expected != "URLError -1000") << request.url;
  }
}

TYPED_TEST_P(HttpContract, ADestroyedHandleNeverCompletes) {
  this->phone.serve("/soon", 200, "x", std::chrono::milliseconds(5));
  const auto calls = std::make_shared<std::atomic<int>>(0);
  for (int i = 0; i < 20; ++i) {
    const auto handle = this->http.send(this->get(this->phone.url("/soon")), [calls](auto&&) { ++*calls; });
    if (i % 2 == 1) this->phone.pass(std::chrono::milliseconds(1));
  }
  EXPECT_EQ(calls.use_count(), 1);  // the completions are gone, with all that they held
  const int early = *calls;         // a few may have come before their handle's end
  this->phone.pass(std::chrono::milliseconds(30));
  EXPECT_EQ(*calls, early);
}

TYPED_TEST_P(HttpContract, TheCompletionMayDestroyItsHandle) {
  this->phone.serve("/x", 200, "x", Duration::zero());
  std::atomic<bool> finished = false;
  std::mutex mutex;
  Subscription handle;
  {
    const std::lock_guard lock(mutex);
    handle = this->http.send(this->get(this->phone.url("/x")), [&](const Result<HttpReply>&) {
      const std::lock_guard inside(mutex);
      handle.cancel();
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
    void response(phone::RequestId id, const Result<HttpReply>& got) override { add(id, test::summary(got)); }
    void add(phone::RequestId id, const std::string& what) {
      const std::lock_guard lock(mutex);
      seen[id] += what + ";";
    }
    std::mutex mutex;
    std::map<phone::RequestId, std::string> seen;
  } watcher;
  this->phone.observe(watcher);
  this->phone.serve("/one", 200, "x", std::chrono::milliseconds(5));
  this->phone.serve("/two", 404, "x", Duration::zero());
  test::HttpOutcome one, two, dropped, refused;
  this->send(one, this->get(this->phone.url("/one")));
  this->send(two, this->get(this->phone.url("/two")));
  this->send(refused, this->get("nonsense"));
  this->send(dropped, this->get(this->phone.url("/one")));
  dropped.handle.cancel();
  for (auto* each : {&one, &two, &refused}) EXPECT_NE(this->ended(*each), "never");
  this->phone.pass(std::chrono::milliseconds(20));
  const std::lock_guard lock(watcher.mutex);
  EXPECT_EQ(watcher.seen, (std::map<phone::RequestId, std::string>{
                              {1, "/one;200: x;"}, {2, "/two;404: x;"}, {3, "/one;"}}));
}

REGISTER_TYPED_TEST_SUITE_P(HttpContract, EveryStatusIsAnAnswer, TransportFaultsHaveTheirErrors,
                            ADestroyedHandleNeverCompletes, TheCompletionMayDestroyItsHandle,
                            RequestsAndResponsesAreSeenUnderOneNumber);

}  // namespace orlan
