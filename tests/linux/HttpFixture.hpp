#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <utility>

#include "linux/LoopbackServer.hpp"
#include "phones/linux/CurlHttpClient.hpp"

namespace orlan::linuxphone::test {

/// What came of one request; outlives its client.
struct Outcome {
  HttpDone done() {
    return [this](Result<HttpReply> came) {
      if (completions++ == 0) first.set_value(std::move(came));
    };
  }

  /// Waits for the first completion; an error of its own when none comes.
  Result<HttpReply> wait() {
    if (result.wait_for(std::chrono::seconds(20)) == std::future_status::ready) return result.get();
    return Unexpected(Error{"test", 0, "never completed"});
  }

  std::atomic<int> completions = 0;
  std::promise<Result<HttpReply>> first;
  std::shared_future<Result<HttpReply>> result = first.get_future().share();
};

inline HttpRequest get(const std::string& url, Duration timeout = std::chrono::seconds(10)) {
  return {"GET", url, {}, std::nullopt, timeout};
}

/// One exchange with a client of its own, whose end shows whether there was a second completion.
inline Result<HttpReply> exchange(HttpRequest request, const HttpOptions& options = {}) {
  phone::PhoneObserver nobody;
  Outcome outcome;
  Subscription handle;
  auto client = std::make_unique<CurlHttpClient>(nobody, options);
  handle = client->send(std::move(request), outcome.done());
  auto result = outcome.wait();
  client.reset();
  EXPECT_EQ(outcome.completions, 1);
  return result;
}

/// "200: body", "204 without a body", "no HTTP" or "error -1001".
inline std::string summary(const Result<HttpReply>& result) {
  if (!result) return "error " + std::to_string(result.error().code);
  if (!result->status) return "no HTTP";
  const std::string status = std::to_string(*result->status);
  return result->body ? status + ": " + *result->body : status + " without a body";
}

}  // namespace orlan::linuxphone::test
