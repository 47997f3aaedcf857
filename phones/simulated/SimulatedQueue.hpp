#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "orlan/platform/SerialQueue.hpp"
#include "phones/simulated/Scheduler.hpp"

namespace orlan::sim {

/// A serial queue in virtual time: a task is a turn of the world's scheduler. What is posted dies with it.
class SimulatedQueue final : public SerialQueue {
 public:
  SimulatedQueue(std::shared_ptr<Scheduler> scheduler, std::shared_ptr<const QueueContext> context);
  ~SimulatedQueue() override;

  void async(std::function<void()> task) override;
  [[nodiscard]] bool isCurrent() const override;

 private:
  void confinementBroken() const override;

  std::shared_ptr<Scheduler> scheduler_;
  std::shared_ptr<const QueueContext> context_;
};

/// A main loop in virtual time.
class SimulatedLoop final : public MainLoop {
 public:
  SimulatedLoop(std::shared_ptr<Scheduler> scheduler, std::shared_ptr<const QueueContext> context);
  ~SimulatedLoop() override;

  void async(std::function<void()> task) override;
  [[nodiscard]] bool isCurrent() const override;
  [[nodiscard]] Subscription after(Duration delay, std::function<void()> task) override;
  [[nodiscard]] Subscription every(Duration interval, std::function<void()> task) override;

  /// Everything posted and every timer dies.
  void clear();

 private:
  void confinementBroken() const override;

  std::shared_ptr<Scheduler> scheduler_;
  std::shared_ptr<const QueueContext> context_;
};

class SimulatedQueues final : public Queues {
 public:
  explicit SimulatedQueues(std::shared_ptr<Scheduler> scheduler) : scheduler_(std::move(scheduler)) {}
  [[nodiscard]] std::unique_ptr<SerialQueue> make(std::string_view label) override;

 private:
  std::shared_ptr<Scheduler> scheduler_;
};

}  // namespace orlan::sim
