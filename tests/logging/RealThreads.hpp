#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>
#include <utility>

#include "orlan/platform/SerialQueue.hpp"

namespace orlan::test {

/// A serial queue on a thread of its own, for tests of what virtual time cannot show. Its end runs what is
/// still posted, as on a real phone.
class ThreadQueue final : public SerialQueue {
 public:
  ThreadQueue() : thread_([this] { run(); }) {}
  ~ThreadQueue() override {
    async(nullptr);
    thread_.join();
  }

  void async(std::function<void()> task) override {
    {
      const std::lock_guard lock(mutex_);
      tasks_.push_back(std::move(task));
    }
    changed_.notify_one();
  }
  [[nodiscard]] bool isCurrent() const override { return std::this_thread::get_id() == thread_.get_id(); }

 private:
  void run() {
    while (auto task = next()) task();
  }
  std::function<void()> next() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !tasks_.empty(); });
    auto task = std::move(tasks_.front());
    tasks_.pop_front();
    return task;
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void()>> tasks_;
  std::thread thread_;
};

class ThreadQueues final : public Queues {
 public:
  [[nodiscard]] std::unique_ptr<SerialQueue> make(std::string_view) override {
    return std::make_unique<ThreadQueue>();
  }
};

}  // namespace orlan::test
