#include "orlan/c/ThreadQueue.hpp"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

#include "orlan/c/Guard.hpp"

namespace orlan::c {

struct ThreadQueue::Inbox {
  std::mutex mutex;
  std::condition_variable changed;
  std::deque<std::function<void()>> tasks;
  bool closing = false;

  /// The next task, as soon as there is one; an empty function when the queue is closed and done.
  std::function<void()> take() {
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return closing || !tasks.empty(); });
    if (tasks.empty()) return {};
    auto task = std::move(tasks.front());
    tasks.pop_front();
    return task;
  }
};

ThreadQueue::ThreadQueue() : inbox_(std::make_shared<Inbox>()) {
  thread_ = std::thread([inbox = inbox_] {
    const Inside inside;
    while (auto task = inbox->take()) quietly(task);
  });
}

ThreadQueue::~ThreadQueue() {
  {
    const std::lock_guard lock(inbox_->mutex);
    inbox_->closing = true;
  }
  inbox_->changed.notify_one();
  if (isCurrent()) {
    thread_.detach();
  } else {
    thread_.join();
  }
}

void ThreadQueue::async(std::function<void()> task) {
  {
    const std::lock_guard lock(inbox_->mutex);
    inbox_->tasks.push_back(std::move(task));
  }
  inbox_->changed.notify_one();
}

}  // namespace orlan::c
