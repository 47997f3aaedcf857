#include "phones/common/ThreadQueue.hpp"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

#include "phones/common/Threads.hpp"

namespace orlan::phone {

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

ThreadQueue::ThreadQueue(std::string_view label, Runner runner) : inbox_(std::make_shared<Inbox>()) {
  const auto dot = label.rfind('.');  // of "com.example.logger" the last part says most
  thread_ = startThread(dot == label.npos ? label : label.substr(dot + 1), [inbox = inbox_, runner] {
    while (auto task = inbox->take()) runner(std::move(task));
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

}  // namespace orlan::phone
