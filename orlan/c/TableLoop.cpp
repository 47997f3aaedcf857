#include "orlan/c/TableLoop.hpp"

#include <string>
#include <utility>

#include "orlan/c/Guard.hpp"
#include "orlan/c/ThreadQueue.hpp"
#include "orlan/c/Values.hpp"

namespace orlan::c {
namespace {

/// An address of its own for each thread.
const void* thisThread() {
  static thread_local const char mark = 0;
  return &mark;
}

/// The host is only told of what was still waiting, and not after the phone is gone.
void cancel(const std::weak_ptr<Tasks>& tasks, const orlan_loop_functions& table, orlan_id task) {
  const auto living = tasks.lock();
  if (living && living->drop(task)) ask(table.cancel, table.context, task);
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
  return Subscription::onCancel(
      [tasks = std::weak_ptr(tasks_), table = table_, id] { cancel(tasks, table, id); });
}

/// A repeating timer: shared by its handle and by the tick that waits, so that the task may end it.
struct TableLoop::Ticking : std::enable_shared_from_this<Ticking> {
  orlan_loop_functions table;
  std::weak_ptr<Tasks> tasks;
  Duration interval;
  std::function<void()> task;
  orlan_id next = 0;
  bool live = true;

  void postNext() {
    const auto living = tasks.lock();
    if (!living) return;
    next = living->add([self = shared_from_this()] { self->tick(); }, 0);
    ask(table.post_after, table.context, static_cast<std::int64_t>(interval.count()), next);
  }
  void tick() {
    if (!live) return;
    postNext();
    task();
  }
};

Subscription TableLoop::every(Duration interval, std::function<void()> task) {
  auto ticking = std::make_shared<Ticking>();
  ticking->table = table_;
  ticking->tasks = tasks_;
  ticking->interval = interval;
  ticking->task = std::move(task);
  ticking->postNext();
  return Subscription::onCancel([ticking] {
    ticking->live = false;
    cancel(ticking->tasks, ticking->table, ticking->next);
  });
}

std::unique_ptr<SerialQueue> TableQueues::make(std::string_view label) {
  if (table_.post == nullptr) return std::make_unique<ThreadQueue>();
  return std::make_unique<TableQueue>(table_, tasks_, std::string(label));
}

}  // namespace orlan::c
