#include <gtest/gtest.h>
#include <signal.h>
#include <termios.h>

#include "tools/orlan/run/Keyboard.hpp"
#include "tools/run/Terminal.hpp"

namespace orlan::run {
namespace {

bool isCooked() {
  termios settings;
  return tcgetattr(STDIN_FILENO, &settings) == 0 && (settings.c_lflag & ICANON) != 0;
}

/// A job that is stopped, moved to the background, in front again and to the background; a number is a fault.
int job() {
  setpgid(0, 0);
  tcsetpgrp(STDIN_FILENO, getpgrp());
  signal(SIGTTOU, SIG_DFL);
  const linuxphone::RealTime time;
  linuxphone::EventLoop loop(time);
  Keyboard keyboard(loop, [](std::string_view) {});
  if (!keyboard.isThere() || isCooked()) return 1;
  raise(SIGTSTP);  // Ctrl-Z
  keyboard.refresh();
  if (keyboard.isThere()) return 2;
  raise(SIGSTOP);
  keyboard.refresh();
  if (!keyboard.isThere() || isCooked()) return 3;
  raise(SIGSTOP);
  return 0;
}

int shell() {
  signal(SIGTTOU, SIG_IGN);
  termios cooked;
  tcgetattr(STDIN_FILENO, &cooked);
  const pid_t process = fork();
  if (process == 0) _exit(job());
  int status = 0;
  for (int stop = 0; stop < 3; ++stop) {
    waitpid(process, &status, WUNTRACED);
    if (!WIFSTOPPED(status)) return WEXITSTATUS(status);
    if (stop == 0 && !isCooked()) return 4;  // not given back
    tcsetattr(STDIN_FILENO, TCSANOW, &cooked);
    tcsetpgrp(STDIN_FILENO, stop == 1 ? process : getpgrp());
    kill(process, SIGCONT);
  }
  waitpid(process, &status, WUNTRACED);
  if (!WIFSTOPPED(status)) return WEXITSTATUS(status);
  kill(process, SIGKILL);
  return 5;  // it waits for ever
}

TEST(Keyboard, TakesTheTerminalInFrontOnlyAndGivesItBack) {
  test::Terminal terminal(shell);
  EXPECT_EQ(terminal.wait(), 0);
}

}  // namespace
}  // namespace orlan::run
