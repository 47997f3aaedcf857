#include "phones/c/Tasks.hpp"

#include <utility>

#include "orlan/c/Guard.hpp"

namespace orlan::c {
namespace {

/// The innermost task that runs on this thread; a host may run one inside another.
struct Frame {
  const Tasks* tasks;
  orlan_id queue;
  const Frame* outer;
};
thread_local const Frame* innermost = nullptr;

}  // namespace

bool Tasks::isCurrent(const Tasks& tasks, orlan_id queue) {
  for (const Frame* frame = innermost; frame != nullptr; frame = frame->outer) {
    if (frame->tasks == &tasks && frame->queue == queue) return true;
  }
  return false;
}

bool Tasks::isOnAnyQueue(const Tasks& tasks) {
  return innermost != nullptr && innermost->tasks == &tasks && innermost->queue != 0;
}

orlan_id Tasks::nextId() {
  const std::lock_guard lock(mutex_);
  return ++last_;
}

orlan_id Tasks::add(Task task, orlan_id queue) {
  const std::lock_guard lock(mutex_);
  waiting_.emplace_hint(waiting_.end(), ++last_, Waiting{std::move(task), queue});
  return last_;
}

bool Tasks::isOfMain(orlan_id task) {
  const std::lock_guard lock(mutex_);
  const auto found = waiting_.find(task);
  return found != waiting_.end() && found->second.queue == 0;
}

bool Tasks::drop(orlan_id task) {
  Waits::node_type dropped;  // what it holds ends outside the lock
  const std::lock_guard lock(mutex_);
  dropped = waiting_.extract(task);
  return !dropped.empty();
}

bool Tasks::runsElsewhere(orlan_id queue) const {
  return queue != 0 && running_.contains(queue) && !isCurrent(*this, queue);
}

void Tasks::runOne(std::unique_lock<std::mutex>& lock, Waits::iterator at) {
  auto node = waiting_.extract(at);
  const orlan_id queue = node.mapped().queue;
  const bool outermost = queue != 0 && running_.insert(queue).second;
  lock.unlock();
  {
    const Inside inside;
    const Frame frame{this, queue, innermost};
    innermost = &frame;
    quietly([&] { node.mapped().task(); });
    node = {};
    innermost = frame.outer;
  }
  lock.lock();
  if (outermost) {
    running_.erase(queue);
    ended_.notify_all();
  }
}

bool Tasks::run(orlan_id task) {
  std::unique_lock lock(mutex_);
  auto found = waiting_.find(task);
  while (found != waiting_.end() && runsElsewhere(found->second.queue)) {
    ended_.wait(lock);
    found = waiting_.find(task);
  }
  if (found == waiting_.end()) return false;
  runOne(lock, found);
  return true;
}

void Tasks::finish(orlan_id queue) {
  std::unique_lock lock(mutex_);
  while (true) {
    ended_.wait(lock, [&] { return !runsElsewhere(queue); });
    auto at = waiting_.begin();
    while (at != waiting_.end() && at->second.queue != queue) ++at;
    if (at == waiting_.end()) return;
    runOne(lock, at);
  }
}

}  // namespace orlan::c
