#include "tools/orlan/run/Keyboard.hpp"

#include <sys/types.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <utility>

namespace orlan::run {

struct Keyboard::Former {
  termios settings;
};

Keyboard::Keyboard(linuxphone::EventLoop& loop, std::function<void(std::string_view keys)> onKeys)
    : onKeys_(std::move(onKeys)) {
  termios settings;
  if (tcgetattr(STDIN_FILENO, &settings) != 0 || tcgetpgrp(STDIN_FILENO) != getpgrp()) return;
  former_ = std::make_unique<Former>(Former{settings});
  settings.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);  // Ctrl-C stays a signal
  settings.c_cc[VMIN] = 1;
  settings.c_cc[VTIME] = 0;
  tcsetattr(STDIN_FILENO, TCSANOW, &settings);
  watch_ = loop.watch(STDIN_FILENO, [this] { readKeys(); });
}

Keyboard::~Keyboard() {
  if (former_) tcsetattr(STDIN_FILENO, TCSANOW, &former_->settings);
}

void Keyboard::readKeys() {
  std::array<char, 256> keys;
  const ssize_t count = ::read(STDIN_FILENO, keys.data(), keys.size());
  if (count > 0) {
    onKeys_(std::string_view(keys.data(), static_cast<std::size_t>(count)));
  } else {
    watch_ = {};  // the terminal is gone; the walk goes on without it
  }
}

}  // namespace orlan::run
