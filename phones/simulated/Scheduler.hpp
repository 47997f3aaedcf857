#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "orlan/base/Time.hpp"

namespace orlan::sim {

/// What a running task counts as running on. Several queues may share one: the loops of a phone are all its
/// main thread.
struct QueueContext {
  std::string label;
  bool isMain = false;
};

/// Virtual time and everything that waits for it, in one list ordered by deadline and then by posting.
/// Tasks are posted and cancelled from any thread; they run on the thread that drives time.
class Scheduler {
 public:
  /// Names one waiting task, for good.
  struct Key {
    Duration due{};
    std::uint64_t order = 0;
    friend auto operator<=>(const Key&, const Key&) = default;
  };

  Scheduler() = default;
  Scheduler(const Scheduler&) = delete;
  Scheduler& operator=(const Scheduler&) = delete;

  [[nodiscard]] Duration now() const;  // since second 0

  /// Runs `task` as `context`, `delay` from now (negative: now). `owner` is for `cancelAll`.
  Key post(const void* owner, std::shared_ptr<const QueueContext> context, Duration delay,
           std::function<void()> task);

  /// The next tick of a repeating timer, `interval` (at least a microsecond) after the last one; it keeps its
  /// place among equal deadlines.
  Key repeat(Key last, Duration interval, const void* owner, std::shared_ptr<const QueueContext> context,
             std::function<void()> task);

  /// A task that has run or been cancelled is none of its business.
  void cancel(Key key);
  void cancelAll(const void* owner);

  /// Whether the caller's task runs as `context`. Outside any task every main context is current on the
  /// thread that drives time.
  [[nodiscard]] bool isCurrent(const QueueContext& context) const;

  /// Runs all that is due up to and including `time`; then it is `time`. A time that has passed only runs
  /// what is due now. Ends the process with a message when called from inside a task, or when one instant
  /// never becomes quiet.
  void runUntil(Duration time);

 private:
  struct Waiting {
    const void* owner;
    std::shared_ptr<const QueueContext> context;
    std::function<void()> task;
  };

  bool runNext(Duration limit);

  const std::thread::id driver_ = std::this_thread::get_id();
  mutable std::mutex mutex_;  // guards all below but current_
  Duration now_{};
  std::uint64_t posted_ = 0;
  std::uint64_t ranAtThisInstant_ = 0;
  std::map<Key, Waiting> waiting_;
  std::shared_ptr<const QueueContext> current_;  // the driver's thread only
};

}  // namespace orlan::sim
