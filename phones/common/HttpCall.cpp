#include "phones/common/HttpCall.hpp"

#include <utility>

namespace orlan::phone {

void HttpCall::finish(PhoneObserver& observer, Result<HttpReply> result) {
  HttpDone done;
  {
    const std::lock_guard lock(mutex_);
    if (state_ != State::waiting) return;
    state_ = State::answering;
    answerer_ = std::this_thread::get_id();
    done = std::move(done_);
  }
  if (id_ != unseen) observer.response(id_, result);
  done(std::move(result));
  done = nullptr;  // what it holds dies before a canceller goes on
  {
    const std::lock_guard lock(mutex_);
    state_ = State::over;
  }
  changed_.notify_all();
}

void HttpCall::cancel() {
  HttpDone unused;  // dies outside the lock
  std::unique_lock lock(mutex_);
  if (state_ == State::waiting) {
    state_ = State::over;
    unused = std::move(done_);
    lock.unlock();
    return;
  }
  if (state_ == State::answering && answerer_ == std::this_thread::get_id()) return;
  changed_.wait(lock, [this] { return state_ == State::over; });
}

}  // namespace orlan::phone
