#include "tools/orlan/run/Keyboard.hpp"

#include <sys/types.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <optional>
#include <utility>

namespace orlan::run {

namespace {

constexpr tcflag_t whatAPersonSees = ICANON | ECHO;

// How the terminal was, and what Ctrl-Z did; here, where the handler of a signal finds them.
std::optional<termios> former;
struct sigaction formerStop = {};

void setTerminal(const termios& settings) {
  if (isOurTerminal(STDIN_FILENO)) tcsetattr(STDIN_FILENO, TCSANOW, &settings);
}

void answerStopsWith(void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigaction(SIGTSTP, &action, nullptr);
}

/// Not every shell puts the terminal right by itself.
void onStop(int) {
  if (former) setTerminal(*former);
  answerStopsWith(SIG_DFL);
  std::raise(SIGTSTP);
  sigset_t stop;
  sigset_t before;
  sigemptyset(&stop);
  sigaddset(&stop, SIGTSTP);
  pthread_sigmask(SIG_UNBLOCK, &stop, &before);  // here it stops
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  answerStopsWith(onStop);
}

}  // namespace

bool isOurTerminal(int fd) {
  return tcgetpgrp(fd) == getpgrp();
}

Keyboard::Keyboard(linuxphone::EventLoop& loop, std::function<void(std::string_view keys)> onKeys)
    : loop_(loop), onKeys_(std::move(onKeys)) {
  sigaction(SIGTSTP, nullptr, &formerStop);
  if (formerStop.sa_handler == SIG_DFL) answerStopsWith(onStop);
  refresh();
}

Keyboard::~Keyboard() {
  sigaction(SIGTSTP, &formerStop, nullptr);
  if (former) setTerminal(*former);
  former.reset();
}

void Keyboard::refresh() {
  termios settings;
  if (!isOurTerminal(STDIN_FILENO) || tcgetattr(STDIN_FILENO, &settings) != 0) {
    watch_ = {};
    return;
  }
  if ((settings.c_lflag & whatAPersonSees) != 0) {  // the first time, or after somebody put it right
    if (!former) former = settings;
    settings.c_lflag &= ~whatAPersonSees;  // Ctrl-C stays a signal
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    setTerminal(settings);
  }
  if (!watch_) watch_ = loop_.watch(STDIN_FILENO, [this] { readKeys(); });
}

void Keyboard::readKeys() {
  std::array<char, 256> keys;
  const ssize_t count = isOurTerminal(STDIN_FILENO) ? ::read(STDIN_FILENO, keys.data(), keys.size()) : 0;
  if (count > 0) {
    onKeys_(std::string_view(keys.data(), static_cast<std::size_t>(count)));
  } else {
    watch_ = {};  // somebody else reads there now, or the terminal is gone; the walk goes on without it
  }
}

}  // namespace orlan::run
