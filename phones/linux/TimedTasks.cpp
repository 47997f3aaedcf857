#include "phones/linux/TimedTasks.hpp"

#include <algorithm>

namespace orlan::linuxphone {

void TimedTasks::add(const std::shared_ptr<Task>& task, Duration deadline) {
  const std::lock_guard lock(mutex_);
  task->deadline = deadline;
  task->order = added_++;
  tasks_.emplace(Key{task->deadline, task->order}, task);
}

void TimedTasks::cancel(Task& task) {
  std::shared_ptr<Task> held;  // what the task holds dies outside the lock
  const std::lock_guard lock(mutex_);
  task.live = false;
  const auto found = tasks_.find(Key{task.deadline, task.order});
  if (found == tasks_.end()) return;
  held = std::move(found->second);
  tasks_.erase(found);
}

std::shared_ptr<TimedTasks::Task> TimedTasks::takeDue(Duration now) {
  const std::lock_guard lock(mutex_);
  if (tasks_.empty() || tasks_.begin()->first.first > now) return nullptr;
  auto task = std::move(tasks_.begin()->second);
  tasks_.erase(tasks_.begin());
  if (task->interval > Duration(0)) {
    const auto missed = (now - task->deadline) / task->interval;
    task->deadline += task->interval * (missed + 1);
    tasks_.emplace(Key{task->deadline, task->order}, task);
  }
  return task;
}

std::shared_ptr<TimedTasks::Task> TimedTasks::takePosted() {
  const std::lock_guard lock(mutex_);
  const auto found =
      std::find_if(tasks_.begin(), tasks_.end(), [](const auto& entry) { return entry.second->isPosted; });
  if (found == tasks_.end()) return nullptr;
  auto task = std::move(found->second);
  tasks_.erase(found);
  return task;
}

std::optional<Duration> TimedTasks::nextDeadline() const {
  const std::lock_guard lock(mutex_);
  if (tasks_.empty()) return std::nullopt;
  return tasks_.begin()->first.first;
}

}  // namespace orlan::linuxphone
