#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>

#include "orlan/base/Single.hpp"
#include "orlan/logging/Logger.hpp"
#include "orlan/sdk/Completions.hpp"

namespace orlan {

/// Listens to answers that a host waits for, each until it is there: a line in the log tells how it ended,
/// then the host is told. Destroying it ends what still listens. Main thread.
class PendingAnswers {
 public:
  explicit PendingAnswers(Logger& logger) : logger_(logger) {}

  /// `success` makes the line for a value; `failure` stands in front of an error's description.
  template <class T, class Success>
  void listen(const Single<T>& answer, Success success, std::string failure, Completion<T> completion) {
    const Id id = ++last_;
    pending_.try_emplace(id);
    auto subscription =
        answer.subscribe([this, id, success = std::move(success), failure = std::move(failure),
                          completion = std::move(completion)](const Result<T>& result) {
          pending_.erase(id);
          if (result) {
            logger_.log(success(*result));
          } else {
            logger_.error(failure + result.error().description);
          }
          if (completion) completion(result);
        });
    const auto slot = pending_.find(id);
    if (slot != pending_.end()) slot->second = std::move(subscription);  // else the answer was there already
  }

 private:
  using Id = std::uint64_t;

  Logger& logger_;
  std::unordered_map<Id, Subscription> pending_;
  Id last_ = 0;
};

}  // namespace orlan
