#pragma once

#include <functional>

#include "orlan/base/Subscription.hpp"
#include "phones/linux/EventLoop.hpp"
#include "phones/linux/FileDescriptor.hpp"

namespace orlan::linuxphone {

/// Turns the first SIGINT and the first SIGTERM into a task on the main loop, where everything may be done
/// that a signal handler may not. The second one of a kind ends the process as usual, so that a host that
/// hangs can still be stopped. One at a time in a process; gives the former handling back when destroyed.
class SignalStop {
 public:
  SignalStop(EventLoop& loop, std::function<void(int signal)> onSignal);
  SignalStop(const SignalStop&) = delete;
  SignalStop& operator=(const SignalStop&) = delete;
  ~SignalStop();

 private:
  struct Former;
  FileDescriptor read_;
  FileDescriptor write_;
  Subscription watch_;
  std::unique_ptr<Former> former_;
};

}  // namespace orlan::linuxphone
