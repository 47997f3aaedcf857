#pragma once

#include <cassert>
#include <functional>
#include <memory>
#include <string_view>

#include "orlan/base/Subscription.hpp"
#include "orlan/base/Time.hpp"

namespace orlan {

/// Runs tasks one after the other, in the order of posting. `async` may be called from any thread and never
/// runs the task inside the call. Destroying a queue waits for a task that is running on another thread; on a
/// real phone it first runs what is still posted, on the simulated one what is posted dies with it.
class SerialQueue {
 public:
  SerialQueue() = default;
  SerialQueue(const SerialQueue&) = delete;
  SerialQueue& operator=(const SerialQueue&) = delete;
  virtual ~SerialQueue() = default;

  virtual void async(std::function<void()> task) = 0;

  /// Whether the caller runs on this queue. Outside any task the main loop is current on its own thread.
  [[nodiscard]] virtual bool isCurrent() const = 0;

  /// A confinement mistake stops a debug build and, in every build, a simulated phone.
  void assertCurrent() const {
    if (!isCurrent()) confinementBroken();
  }

 private:
  virtual void confinementBroken() const { assert(false && "called outside its queue"); }
};

/// Keeps alive what a call on the main thread works with, for as long as the call is under way.
using Turn = std::shared_ptr<const void>;

/// The main thread's queue, with timers on a monotonic clock. A timer's handle cancels it when destroyed,
/// also from inside its own task; handles are used on the main thread. Equal deadlines run in the order of
/// starting.
class MainLoop : public SerialQueue {
 public:
  /// Runs `task` once, `delay` from now (not before; zero or negative: as soon as possible). Any thread.
  [[nodiscard]] virtual Subscription after(Duration delay, std::function<void()> task) = 0;

  /// Runs `task` each `interval` (positive), first one interval from now; late ticks do not pile up.
  [[nodiscard]] virtual Subscription every(Duration interval, std::function<void()> task) = 0;

  /// Opens every entry into the library on this thread, from the host or from the phone: checks the thread as
  /// `assertCurrent` does. A host may end the library from inside whatever the library calls; until the last
  /// turn that is under way has ended, everything the library is made of stays.
  [[nodiscard]] Turn enter() {
    assertCurrent();
    return keepAlive();
  }

  /// False once the host has ended the library: what the call that is under way had left to do is for nobody.
  [[nodiscard]] virtual bool isOpen() const { return true; }

 private:
  /// What a turn keeps; a phone's loop has nothing to keep.
  virtual Turn keepAlive() { return nullptr; }
};

/// Makes serial queues. Any thread.
class Queues {
 public:
  virtual ~Queues() = default;

  /// `label` is for diagnostics, such as "com.orlan.logger".
  [[nodiscard]] virtual std::unique_ptr<SerialQueue> make(std::string_view label) = 0;
};

}  // namespace orlan
