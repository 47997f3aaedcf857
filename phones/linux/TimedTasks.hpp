#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "orlan/base/Time.hpp"

namespace orlan::linuxphone {

/// What an event loop has to do and when, in one order: by deadline, equal deadlines as they came. A posted
/// task is due at once, so timers that are overdue come before it. Any thread.
class TimedTasks {
 public:
  struct Task {
    std::function<void()> run;
    Duration interval{};      // positive: again and again
    bool isPosted = false;    // by `async`, not by a timer
    Duration deadline{};      // kept by TimedTasks
    std::uint64_t order = 0;  // kept by TimedTasks
    std::atomic<bool> live = true;
  };

  void add(const std::shared_ptr<Task>& task, Duration deadline);

  /// Takes the task out; it will not be handed out again.
  void cancel(Task& task);

  /// The next task that is due at `now`; null when none is. A repeating task is put back for its next tick
  /// after `now`, so that missed ticks do not pile up.
  [[nodiscard]] std::shared_ptr<Task> takeDue(Duration now);

  /// The next posted task, whatever timers stand before it.
  [[nodiscard]] std::shared_ptr<Task> takePosted();

  [[nodiscard]] std::optional<Duration> nextDeadline() const;

 private:
  using Key = std::pair<Duration, std::uint64_t>;
  mutable std::mutex mutex_;
  std::map<Key, std::shared_ptr<Task>> tasks_;
  std::uint64_t added_ = 0;
};

}  // namespace orlan::linuxphone
