#pragma once

#include <functional>
#include <memory>
#include <thread>

#include "orlan/platform/SerialQueue.hpp"

namespace orlan::c {

/// A queue on a thread of its own, for phones that bring none. Its end runs what is still posted.
class ThreadQueue final : public SerialQueue {
 public:
  ThreadQueue();
  ~ThreadQueue() override;

  void async(std::function<void()> task) override;
  [[nodiscard]] bool isCurrent() const override { return thread_.get_id() == std::this_thread::get_id(); }

 private:
  struct Inbox;
  std::shared_ptr<Inbox> inbox_;
  std::thread thread_;
};

}  // namespace orlan::c
