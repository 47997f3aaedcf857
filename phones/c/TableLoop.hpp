#pragma once

#include <memory>

#include "orlan/c/phone.h"
#include "orlan/platform/SerialQueue.hpp"
#include "phones/c/Tasks.hpp"

namespace orlan::c {

/// The host's main loop.
class TableLoop final : public MainLoop {
 public:
  TableLoop(const orlan_loop_functions& table, std::shared_ptr<Tasks> tasks);

  void async(std::function<void()> task) override;
  [[nodiscard]] bool isCurrent() const override;
  [[nodiscard]] Subscription after(Duration delay, std::function<void()> task) override;

  /// Each tick posts the next one before it runs, so that ticks keep their place and never pile up.
  [[nodiscard]] Subscription every(Duration interval, std::function<void()> task) override;

 private:
  const orlan_loop_functions table_;
  const std::shared_ptr<Tasks> tasks_;
  const void* const maker_;
};

/// The host's queues, or threads of our own where it has none.
class TableQueues final : public Queues {
 public:
  TableQueues(const orlan_queue_functions& table, std::shared_ptr<Tasks> tasks)
      : table_(table), tasks_(std::move(tasks)) {}

  [[nodiscard]] std::unique_ptr<SerialQueue> make(std::string_view label) override;

 private:
  const orlan_queue_functions table_;
  const std::shared_ptr<Tasks> tasks_;
};

}  // namespace orlan::c
