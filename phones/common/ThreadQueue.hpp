#pragma once

#include <memory>
#include <string_view>
#include <thread>

#include "orlan/platform/SerialQueue.hpp"

namespace orlan::phone {

/// A serial queue on a thread of its own. Destroying it runs what is still posted, and what that posts, then
/// ends the thread; a task that destroys its own queue does not wait for itself.
class ThreadQueue final : public SerialQueue {
 public:
  /// What a phone puts around each task, such as what becomes of its exceptions.
  using Runner = void (*)(std::function<void()> task);

  explicit ThreadQueue(
      std::string_view label, Runner runner = [](std::function<void()> task) { task(); });
  ~ThreadQueue() override;

  void async(std::function<void()> task) override;
  [[nodiscard]] bool isCurrent() const override { return thread_.get_id() == std::this_thread::get_id(); }

 private:
  struct Inbox;
  std::shared_ptr<Inbox> inbox_;  // shared with the thread, which may outlive the queue
  std::thread thread_;
};

class ThreadQueues final : public Queues {
 public:
  [[nodiscard]] std::unique_ptr<SerialQueue> make(std::string_view label) override {
    return std::make_unique<ThreadQueue>(label);
  }
};

}  // namespace orlan::phone
