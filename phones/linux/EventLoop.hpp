#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "orlan/platform/SerialQueue.hpp"
#include "phones/linux/FileDescriptor.hpp"
#include "phones/linux/TimeSource.hpp"

namespace orlan::linuxphone {

/// The main loop of a real phone; the main thread is the one that makes it. Sleeps in the kernel until a task
/// is posted, a timer is due or a watched file has something to say. Destroying it runs what is still posted;
/// timers that are not due yet end silently, and their handles may outlive the loop.
class EventLoop final : public MainLoop {
 public:
  explicit EventLoop(const TimeSource& time);
  ~EventLoop() override;

  void async(std::function<void()> task) override;
  [[nodiscard]] bool isCurrent() const override;
  [[nodiscard]] Subscription after(Duration delay, std::function<void()> task) override;
  [[nodiscard]] Subscription every(Duration interval, std::function<void()> task) override;

  /// Runs `handler` whenever `fd` can be read without blocking (end of file included), until the handle
  /// ends. The descriptor stays the caller's. Main thread.
  [[nodiscard]] Subscription watch(int fd, std::function<void()> handler);

  /// Runs tasks until `stop`. A stop that came before ends it at once. Main thread.
  void run();

  /// Runs tasks until `isDone` says yes (asked after every turn), at most `limit` of real time and not beyond
  /// a stop, which it leaves to `run`. The last answer of `isDone`. Main thread.
  bool runUntil(const std::function<bool()>& isDone, std::chrono::milliseconds limit);

  /// Runs what has been posted, and what that posts, without sleeping; no timers. Main thread.
  void runPosted();

  /// Ends `run` after the task that is running. Any thread, also a signal handler.
  void stop();

 private:
  struct Pending;
  struct Watch;

  Subscription start(Duration delay, Duration interval, std::function<void()> task);
  void turn(std::optional<std::chrono::nanoseconds> longestSleep);
  void runDue();
  void sleepAndServe(std::optional<std::chrono::nanoseconds> longest);
  [[nodiscard]] std::optional<std::chrono::nanoseconds> sleepUntilNext() const;

  const TimeSource& time_;
  const std::thread::id thread_ = std::this_thread::get_id();
  std::shared_ptr<Pending> pending_;  // shared with the handles, weakly
  std::vector<std::shared_ptr<Watch>> watches_;
  std::atomic<bool> stopping_ = false;
};

}  // namespace orlan::linuxphone
