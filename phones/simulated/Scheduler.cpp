#include "phones/simulated/Scheduler.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace orlan::sim {

namespace {

constexpr std::uint64_t mostTasksAtOneInstant = 1'000'000;

Duration later(Duration time, Duration by) {
  by = std::max(by, Duration::zero());
  return time > Duration::max() - by ? Duration::max() : time + by;
}

[[noreturn]] void stop(const char* why, const std::string& label) {
  std::fprintf(stderr, "simulated phone: %s (queue \"%s\")\n", why, label.c_str());
  std::abort();
}

}  // namespace

Duration Scheduler::now() const {
  const std::lock_guard lock(mutex_);
  return now_;
}

Scheduler::Key Scheduler::post(const void* owner, std::shared_ptr<const QueueContext> context, Duration delay,
                               std::function<void()> task) {
  const std::lock_guard lock(mutex_);
  const Key key{later(now_, delay), ++posted_};
  waiting_.emplace(key, Waiting{owner, std::move(context), std::move(task)});
  return key;
}

Scheduler::Key Scheduler::repeat(Key last, Duration interval, const void* owner,
                                 std::shared_ptr<const QueueContext> context, std::function<void()> task) {
  const std::lock_guard lock(mutex_);
  const Key key{later(last.due, std::max(interval, Duration(1))), last.order};
  waiting_.emplace(key, Waiting{owner, std::move(context), std::move(task)});
  return key;
}

void Scheduler::cancel(Key key) {
  decltype(waiting_)::node_type gone;  // destroyed after the lock: it may own what cancels in turn
  const std::lock_guard lock(mutex_);
  gone = waiting_.extract(key);
}

void Scheduler::cancelAll(const void* owner) {
  std::map<Key, Waiting> gone;
  const std::lock_guard lock(mutex_);
  for (auto each = waiting_.begin(); each != waiting_.end();) {
    const auto next = std::next(each);
    if (each->second.owner == owner) gone.insert(waiting_.extract(each));
    each = next;
  }
}

bool Scheduler::isCurrent(const QueueContext& context) const {
  if (std::this_thread::get_id() != driver_) return false;
  return current_ ? current_.get() == &context : context.isMain;
}

void Scheduler::runUntil(Duration time) {
  if (current_) stop("time cannot be driven from inside a task", current_->label);
  if (std::this_thread::get_id() != driver_) stop("time is driven by the thread that made the world", "");
  const Duration limit = std::max(time, now());
  while (runNext(limit)) {
  }
  const std::lock_guard lock(mutex_);
  if (limit > now_) ranAtThisInstant_ = 0;
  now_ = limit;
}

bool Scheduler::runNext(Duration limit) {
  decltype(waiting_)::node_type next;
  {
    const std::lock_guard lock(mutex_);
    if (waiting_.empty() || waiting_.begin()->first.due > limit) return false;
    next = waiting_.extract(waiting_.begin());
    if (next.key().due > now_) {
      now_ = next.key().due;
      ranAtThisInstant_ = 0;
    }
    if (++ranAtThisInstant_ > mostTasksAtOneInstant) {
      stop("this instant never ends: tasks keep posting tasks", next.mapped().context->label);
    }
  }
  struct Turn {
    std::shared_ptr<const QueueContext>& current;
    ~Turn() { current.reset(); }
  } turn{current_};
  current_ = next.mapped().context;
  next.mapped().task();
  next.mapped().task = nullptr;  // what it held ends while its queue is still current
  return true;
}

}  // namespace orlan::sim
