#pragma once

#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <set>

#include "orlan/c/phone.h"

namespace orlan::c {

/// What the library wants run, by the identifiers that the host's loop and queues carry. Any thread.
///
/// A task belongs to a queue (0: the main loop). Two tasks of one queue never run at once, also when the host
/// runs them on several threads; the main loop is the host's own affair.
class Tasks {
 public:
  using Task = std::function<void()>;

  /// For tasks, and for all else that has an identifier on this phone.
  [[nodiscard]] orlan_id nextId();

  [[nodiscard]] orlan_id add(Task task, orlan_id queue);
  /// Whether it waits for the main loop.
  [[nodiscard]] bool isOfMain(orlan_id task);
  /// Whether it was still waiting.
  bool drop(orlan_id task);
  /// Runs it if it is still waiting.
  bool run(orlan_id task);

  /// Runs what waits for a queue, in the order of adding, on this thread; waits for what runs elsewhere.
  void finish(orlan_id queue);

  /// Whether the caller runs inside a task of that queue, or of any.
  [[nodiscard]] static bool isCurrent(const Tasks& tasks, orlan_id queue);
  [[nodiscard]] static bool isOnAnyQueue(const Tasks& tasks);

 private:
  struct Waiting {
    Task task;
    orlan_id queue;
  };
  using Waits = std::map<orlan_id, Waiting>;  // in the order of adding

  void runOne(std::unique_lock<std::mutex>& lock, Waits::iterator at);
  [[nodiscard]] bool runsElsewhere(orlan_id queue) const;

  std::mutex mutex_;
  std::condition_variable ended_;
  Waits waiting_;
  std::set<orlan_id> running_;  // queues, not the main loop
  orlan_id last_ = 0;
};

}  // namespace orlan::c
