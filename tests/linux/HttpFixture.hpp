#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "linux/LoopbackServer.hpp"
#include "phones/linux/CurlHttpClient.hpp"

namespace orlan::linuxphone::test {

/// What came of one request; shared with its completion.
class Outcome {
 public:
  HttpDone done() {
    return [this](Result<HttpReply> result) {
      const std::lock_guard lock(mutex_);
      result_ = std::move(result);
      ++completions_;
      changed_.notify_all();
    };
  }

  /// Waits for the first completion; an error of its own when none comes.
  Result<HttpReply> wait() {
    std::unique_lock lock(mutex_);
    if (!changed_.wait_for(lock, std::chrono::seconds(20), [this] { return completions_ > 0; })) {
      return Unexpected(Error{"test", 0, "never completed"});
    }
    return *result_;
  }
  int completions() {
    const std::lock_guard lock(mutex_);
    return completions_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::optional<Result<HttpReply>> result_;
  int completions_ = 0;
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
  EXPECT_EQ(outcome.completions(), 1);
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
