#pragma once

#include <atomic>
#include <chrono>
#include <future>
#include <string>
#include <utility>

#include "orlan/platform/HttpClient.hpp"

namespace orlan::test {

/// What came of one request; outlives its client.
struct HttpOutcome {
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
  Subscription handle;
};

/// "200: body", "204 without a body", "no HTTP" or "URLError -1001".
inline std::string summary(const Result<HttpReply>& result) {
  if (!result) return result.error().domain + " " + std::to_string(result.error().code);
  if (!result->status) return "no HTTP";
  const std::string status = std::to_string(*result->status);
  return result->body ? status + ": " + *result->body : status + " without a body";
}

}  // namespace orlan::test
