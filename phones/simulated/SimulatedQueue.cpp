#include "phones/simulated/SimulatedQueue.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

namespace orlan::sim {

namespace {

/// A repeating task: posts itself anew before each run, so that the run may stop it.
class Ticking : public std::enable_shared_from_this<Ticking> {
 public:
  Ticking(const std::shared_ptr<Scheduler>& scheduler, const void* owner,
          std::shared_ptr<const QueueContext> context, Duration interval, std::function<void()> task)
      : scheduler_(scheduler),
        owner_(owner),
        context_(std::move(context)),
        interval_(std::max(interval, Duration(1))),
        task_(std::move(task)) {}

  void start() {
    if (const auto scheduler = scheduler_.lock()) {
      key_ = scheduler->post(owner_, context_, interval_, turn());
    }
  }

  void stop() {
    if (const auto scheduler = scheduler_.lock()) scheduler->cancel(key_);
  }

 private:
  std::function<void()> turn() {
    return [self = shared_from_this()] { self->run(); };
  }

  void run() {
    if (const auto scheduler = scheduler_.lock()) {
      key_ = scheduler->repeat(key_, interval_, owner_, context_, turn());
    }
    task_();
  }

  std::weak_ptr<Scheduler> scheduler_;
  const void* owner_;
  std::shared_ptr<const QueueContext> context_;
  Duration interval_;
  std::function<void()> task_;
  Scheduler::Key key_{};
};

}  // namespace

void stopConfinementMistake(const QueueContext& context) {
  std::fprintf(stderr, "simulated phone: called outside its queue \"%s\"\n", context.label.c_str());
  std::abort();
}

Subscription SimulatedLoop::after(Duration delay, std::function<void()> task) {
  const auto key = scheduler_->post(this, context_, delay, std::move(task));
  return Subscription::onCancel([scheduler = std::weak_ptr(scheduler_), key] {
    if (const auto living = scheduler.lock()) living->cancel(key);
  });
}

Subscription SimulatedLoop::every(Duration interval, std::function<void()> task) {
  const auto ticking = std::make_shared<Ticking>(scheduler_, this, context_, interval, std::move(task));
  ticking->start();
  return Subscription::onCancel([ticking] { ticking->stop(); });
}

std::unique_ptr<SerialQueue> SimulatedQueues::make(std::string_view label) {
  return std::make_unique<SimulatedQueue>(scheduler_,
                                          std::make_shared<QueueContext>(QueueContext{std::string(label)}));
}

}  // namespace orlan::sim
