#pragma once

#include <functional>
#include <string>

#include "phones/linux/LinuxPhone.hpp"
#include "tools/orlan/run/Command.hpp"

namespace orlan::run {

/// The person who holds the phone and walks: does what a terminal or a script says. Main thread; what it is
/// given outlives it.
class Person {
 public:
  /// While standing still time runs as it does in the world, else `speed` times as fast.
  Person(linuxphone::LinuxPhone& phone, double speed, std::function<void()> onQuit)
      : phone_(phone), speed_(speed), onQuit_(std::move(onQuit)) {}

  void perform(const Command& command);

 private:
  linuxphone::LinuxPhone& phone_;
  const double speed_;
  std::function<void()> onQuit_;
};

}  // namespace orlan::run
