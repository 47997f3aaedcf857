#include "phones/c/TableLoop.hpp"

#include <string>
#include <utility>

#include "orlan/c/Guard.hpp"
#include "orlan/c/Values.hpp"
#include "phones/common/ThreadQueue.hpp"

namespace orlan::c {
namespace {

/// An address of its own for each thread.
const void* thisThread() {
  static thread_local const char mark = 0;
  return &mark;
}

class TableQueue final : public SerialQueue {
 public:
  TableQueue(const orlan_queue_functions& table, std::shared_ptr<Tasks> tasks, const std::string& label)
      : table_(table), tasks_(std::move(tasks)), id_(tasks_->nextId()) {
    ask(table_.made, table_.context, id_, lent(label));
  }
  ~TableQueue() override {
    tasks_->finish(id_);
    ask(table_.gone, table_.context, id_);
  }
  TableQueue(const TableQueue&) = delete;
  TableQueue& operator=(const TableQueue&) = delete;

  void async(std::function<void()> task) override {
    ask(table_.post, table_.context, id_, tasks_->add(std::move(task), id_));
  }
  [[nodiscard]] bool isCurrent() const override { return Tasks::isCurrent(*tasks_, id_); }

 private:
  const orlan_queue_functions table_;
  const std::shared_ptr<Tasks> tasks_;
  const orlan_id id_;
};

}  // namespace

TableLoop::TableLoop(const orlan_loop_functions& table, std::shared_ptr<Tasks> tasks)
    : table_(table), tasks_(std::move(tasks)), maker_(thisThread()) {
  if (table_.post == nullptr || table_.post_after == nullptr) {
    throw Misuse{ORLAN_INVALID_ARGUMENT, "loop: post and post_after are needed"};
  }
}

void TableLoop::async(std::function<void()> task) {
  ask(table_.post, table_.context, tasks_->add(std::move(task), 0));
}

// A queue's tasks are its own, also where the host runs them on the main thread.
bool TableLoop::isCurrent() const {
  if (Tasks::isOnAnyQueue(*tasks_)) return false;
  if (table_.is_main_thread == nullptr) return thisThread() == maker_;
  return ask(table_.is_main_thread, table_.context);
}

Subscription TableLoop::after(Duration delay, std::function<void()> task) {
  const orlan_id id = tasks_->add(std::move(task), 0);
  ask(table_.post_after, table_.context, static_cast<std::int64_t>(delay.count()), id);
  // The host is only told of what was still waiting, and not after the phone is gone.
  return Subscription::onCancel([tasks = std::weak_ptr(tasks_), table = table_, id] {
    const auto living = tasks.lock();
    if (living && living->drop(id)) ask(table.cancel, table.context, id);
  });
}

namespace {

/// A repeating timer: shared by its handle and by the tick that waits, so that the task may end it.
struct Ticking : std::enable_shared_from_this<Ticking> {
  Ticking(TableLoop& main, Duration every, std::function<void()> each)
      : loop(main), interval(every), task(std::move(each)) {}

  void wait() {
    next = loop.after(interval, [self = shared_from_this()] {
      if (!self->live) return;
      self->wait();
      self->task();
    });
  }

  TableLoop& loop;
  const Duration interval;
  const std::function<void()> task;
  Subscription next;
  bool live = true;
};

}  // namespace

Subscription TableLoop::every(Duration interval, std::function<void()> task) {
  auto ticking = std::make_shared<Ticking>(*this, interval, std::move(task));
  ticking->wait();
  return Subscription::onCancel([ticking] {
    ticking->live = false;
    ticking->next.cancel();
  });
}

std::unique_ptr<SerialQueue> TableQueues::make(std::string_view label) {
  if (table_.post == nullptr) {
    return std::make_unique<phone::ThreadQueue>(label, [](std::function<void()> task) {
      const Inside inside;
      quietly(task);
    });
  }
  return std::make_unique<TableQueue>(table_, tasks_, std::string(label));
}

}  // namespace orlan::c
