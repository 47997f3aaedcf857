#include "phones/linux/SignalStop.hpp"

#include <fcntl.h>

#include <atomic>
#include <cassert>
#include <cerrno>
#include <csignal>
#include <utility>

namespace orlan::linuxphone {
namespace {

std::atomic<int> pipeEnd = -1;  // where the handler writes; one a process, as are signals

void onSignalRaised(int signal) {
  const int saved = errno;
  const auto number = static_cast<unsigned char>(signal);
  [[maybe_unused]] const auto written = ::write(pipeEnd, &number, 1);
  errno = saved;
}

}  // namespace

struct SignalStop::Former {
  struct sigaction interrupt = {};
  struct sigaction terminate = {};
};

SignalStop::SignalStop(EventLoop& loop, std::function<void(int signal)> onSignal)
    : former_(std::make_unique<Former>()) {
  assert(pipeEnd == -1);
  int ends[2] = {-1, -1};
  if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;  // signals then keep their usual effect
  read_ = FileDescriptor(ends[0]);
  write_ = FileDescriptor(ends[1]);
  watch_ = loop.watch(read_.get(), [fd = read_.get(), handle = std::move(onSignal)] {
    unsigned char number = 0;
    if (::read(fd, &number, 1) == 1) handle(number);  // which may end this watch
  });
  pipeEnd = write_.get();
  struct sigaction action = {};
  action.sa_handler = onSignalRaised;
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  sigaction(SIGINT, &action, &former_->interrupt);
  sigaction(SIGTERM, &action, &former_->terminate);
}

SignalStop::~SignalStop() {
  if (!read_) return;
  sigaction(SIGINT, &former_->interrupt, nullptr);
  sigaction(SIGTERM, &former_->terminate, nullptr);
  pipeEnd = -1;
}

}  // namespace orlan::linuxphone
