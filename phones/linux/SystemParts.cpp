#include "phones/linux/SystemParts.hpp"

#include <sys/random.h>
#include <syslog.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace orlan::linuxphone {
namespace {

/// write(2) to standard output that never raises SIGPIPE, whatever the host does about that signal.
ssize_t writeOut(std::string_view bytes) {
  sigset_t pipe;
  sigset_t before;
  sigset_t pending;
  sigemptyset(&pipe);
  sigaddset(&pipe, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &pipe, &before);
  sigpending(&pending);  // one that is there already is the host's
  const ssize_t written = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
  const int why = errno;
  if (written < 0 && why == EPIPE && sigismember(&pending, SIGPIPE) == 0) {
    const timespec now{};
    sigtimedwait(&pipe, nullptr, &now);  // takes ours away before it can strike
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  errno = why;
  return written;
}

}  // namespace

std::uint64_t SystemRandom::next() {
  std::uint64_t bits = 0;
  // So few bytes come whole or, interrupted before the kernel has any, not at all.
  while (::getrandom(&bits, sizeof bits, 0) != static_cast<ssize_t>(sizeof bits)) continue;
  return bits;
}

void printToStandardOutput(std::string_view lines) {
  while (!lines.empty()) {
    const ssize_t written = writeOut(lines);
    if (written < 0 && errno != EINTR) return;  // nobody reads it any more
    if (written > 0) lines.remove_prefix(static_cast<std::size_t>(written));
  }
}

void HostConsole::print(const ConsoleLines& lines) {
  if (sink_) {
    const std::lock_guard lock(mutex_);
    sink_(lines.text);
  }
  observer_.consoleLines(lines);
}

void writeToSyslog(std::string_view message) {
  ::syslog(LOG_USER | LOG_INFO, "%.*s", static_cast<int>(message.size()), message.data());
}

void HostSystemLog::write(std::string_view message) {
  if (sink_) sink_(message);
  observer_.systemLog(message);
}

}  // namespace orlan::linuxphone
