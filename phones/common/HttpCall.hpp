#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

#include "phones/common/PhoneObserver.hpp"

namespace orlan::phone {

/// One request's promise to answer exactly once or, after `cancel`, never.
class HttpCall {
 public:
  static constexpr RequestId unseen = 0;  // no observer hears of it

  HttpCall(RequestId id, HttpDone done) : id_(id), done_(std::move(done)) {}

  /// Tells `observer` and the sender, unless cancelled. Call once, on the client's thread.
  void finish(PhoneObserver& observer, Result<HttpReply> result);

  /// Afterwards the sender's callback is not running and will not run; from inside the callback itself, it
  /// only returns. Any thread.
  void cancel();

 private:
  enum class State { waiting, answering, over };

  const RequestId id_;
  std::mutex mutex_;
  std::condition_variable changed_;
  State state_ = State::waiting;
  std::thread::id answerer_;
  HttpDone done_;
};

}  // namespace orlan::phone
