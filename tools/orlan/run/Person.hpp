#pragma once

#include <functional>
#include <string>

#include "phones/linux/LinuxPhone.hpp"
#include "tools/orlan/report/ReportCollector.hpp"
#include "tools/orlan/run/Command.hpp"
#include "tools/orlan/run/DetailsScreen.hpp"

namespace orlan::run {

/// The person who holds the phone and walks: does what a terminal or a script says. Main thread; what it is
/// given outlives it.
class Person {
 public:
  /// While standing still time runs as it does in the world, else `speed` times as fast.
  Person(linuxphone::LinuxPhone& phone, OrlanServices& services, report::ReportCollector& collector,
         DetailsScreen& screen, double speed, std::function<void()> onQuit)
      : phone_(phone),
        services_(services),
        collector_(collector),
        screen_(screen),
        speed_(speed),
        onQuit_(std::move(onQuit)) {}

  void perform(const Command& command);

  void standStill();
  void walkOn();

 private:
  void tap(const std::string& number);

  linuxphone::LinuxPhone& phone_;
  OrlanServices& services_;
  report::ReportCollector& collector_;
  DetailsScreen& screen_;
  const double speed_;
  std::function<void()> onQuit_;
};

}  // namespace orlan::run
