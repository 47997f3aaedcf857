#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <utility>

#include "orlan/platform/SerialQueue.hpp"
#include "phones/simulated/Scheduler.hpp"

namespace orlan::sim {

[[noreturn]] void stopConfinementMistake(const QueueContext& context);

/// A queue of that kind in virtual time: a task is a turn of the world's scheduler. What is posted dies with
/// it.
template <class Kind>
class OnScheduler : public Kind {
 public:
  OnScheduler(std::shared_ptr<Scheduler> scheduler, std::shared_ptr<const QueueContext> context)
      : scheduler_(std::move(scheduler)), context_(std::move(context)) {}
  ~OnScheduler() override { clear(); }

  void async(std::function<void()> task) override {
    scheduler_->post(this, context_, Duration::zero(), std::move(task));
  }
  [[nodiscard]] bool isCurrent() const override { return scheduler_->isCurrent(*context_); }

  /// Everything posted and every timer dies.
  void clear() { scheduler_->cancelAll(this); }

 protected:
  std::shared_ptr<Scheduler> scheduler_;
  std::shared_ptr<const QueueContext> context_;

 private:
  void confinementBroken() const override { stopConfinementMistake(*context_); }
};

using SimulatedQueue = OnScheduler<SerialQueue>;

/// A main loop in virtual time.
class SimulatedLoop final : public OnScheduler<MainLoop> {
 public:
  using OnScheduler::OnScheduler;
  [[nodiscard]] Subscription after(Duration delay, std::function<void()> task) override;
  [[nodiscard]] Subscription every(Duration interval, std::function<void()> task) override;
};

class SimulatedQueues final : public Queues {
 public:
  explicit SimulatedQueues(std::shared_ptr<Scheduler> scheduler) : scheduler_(std::move(scheduler)) {}
  [[nodiscard]] std::unique_ptr<SerialQueue> make(std::string_view label) override;

 private:
  std::shared_ptr<Scheduler> scheduler_;
};

}  // namespace orlan::sim
