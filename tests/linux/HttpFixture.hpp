#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <utility>

#include "linux/LoopbackServer.hpp"
#include "phones/linux/CurlHttpClient.hpp"
#include "tests/phones/contract/HttpOutcome.hpp"

namespace orlan::linuxphone::test {

using orlan::test::HttpOutcome;
using orlan::test::summary;

inline HttpRequest get(const std::string& url, Duration timeout = std::chrono::seconds(10)) {
  return {"GET", url, {}, std::nullopt, timeout};
}

/// A client with the outcomes of its requests, each of which is answered exactly once until its end.
struct Client {
  explicit Client(const HttpOptions& options = {})
      : http(std::make_unique<CurlHttpClient>(nobody, options)) {}
  ~Client() {
    http.reset();
    for (const auto& each : outcomes) EXPECT_EQ(each.completions, 1);
  }
  HttpOutcome& send(HttpRequest request) {
    auto& outcome = outcomes.emplace_back();
    outcome.handle = http->send(std::move(request), outcome.done());
    return outcome;
  }
  std::string exchange(HttpRequest request) { return summary(send(std::move(request)).wait()); }

  phone::PhoneObserver nobody;
  std::deque<HttpOutcome> outcomes;
  std::unique_ptr<CurlHttpClient> http;
};

/// One exchange with a client of its own.
inline std::string exchange(HttpRequest request, const HttpOptions& options = {}) {
  return Client(options).exchange(std::move(request));
}

}  // namespace orlan::linuxphone::test
