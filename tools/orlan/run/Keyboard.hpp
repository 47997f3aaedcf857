#pragma once

#include <functional>
#include <string_view>

#include "orlan/base/Subscription.hpp"
#include "phones/linux/EventLoop.hpp"

namespace orlan::run {

/// Whether `fd` is a terminal that is ours at the moment: not that of a shell in whose background we run.
[[nodiscard]] bool isOurTerminal(int fd);

/// The keyboard of the terminal on standard input, key by key and unseen, for as long as it lives and the
/// terminal is ours. Gives the terminal back as it was, also when Ctrl-Z stops the process. Main thread; one
/// at a time in a process.
class Keyboard {
 public:
  /// `onKeys` gets what was typed since the last call.
  Keyboard(linuxphone::EventLoop& loop, std::function<void(std::string_view keys)> onKeys);
  ~Keyboard();
  Keyboard(const Keyboard&) = delete;
  Keyboard& operator=(const Keyboard&) = delete;

  /// Takes the terminal, or lets go of it, as the shell has moved us to the front or to the background. Now
  /// and then; a signal would tell only that something has changed.
  void refresh();

  /// Whether keys are heard, as of the last refresh.
  [[nodiscard]] bool isThere() const { return static_cast<bool>(watch_); }

 private:
  void readKeys();

  linuxphone::EventLoop& loop_;
  std::function<void(std::string_view)> onKeys_;
  Subscription watch_;
};

}  // namespace orlan::run
