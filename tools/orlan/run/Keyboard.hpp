#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "orlan/base/Subscription.hpp"
#include "phones/linux/EventLoop.hpp"

namespace orlan::run {

/// The keyboard of the terminal on standard input, key by key and unseen, for as long as it lives. Without a
/// terminal there, or from the background of a shell, it does nothing. Main thread.
class Keyboard {
 public:
  /// `onKeys` gets what was typed since the last call.
  Keyboard(linuxphone::EventLoop& loop, std::function<void(std::string_view keys)> onKeys);
  ~Keyboard();
  Keyboard(const Keyboard&) = delete;
  Keyboard& operator=(const Keyboard&) = delete;

  [[nodiscard]] bool isThere() const { return former_ != nullptr; }

 private:
  struct Former;  // how the terminal was before
  void readKeys();

  std::function<void(std::string_view)> onKeys_;
  std::unique_ptr<Former> former_;
  Subscription watch_;
};

}  // namespace orlan::run
