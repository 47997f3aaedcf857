#pragma once

#include <memory>
#include <string>
#include <vector>

#include "orlan/sdk/OrlanPlugin.hpp"
#include "orlan/sdk/Runtime.hpp"
#include "phones/linux/LinuxPhone.hpp"
#include "tools/orlan/report/ReportCollector.hpp"
#include "tools/orlan/run/Inputs.hpp"
#include "tools/orlan/run/KeyInput.hpp"
#include "tools/orlan/run/Narrator.hpp"
#include "tools/orlan/run/Person.hpp"
#include "tools/orlan/run/RunOptions.hpp"

namespace orlan::run {

/// The host application: starts the library, walks once campaigns are there, does on the way what keys or a
/// script say, and ends a little after the walk and the script, at the first signal, or when nobody reads any
/// more what the narrator tells. Main thread; what it is given outlives it.
class TerminalHost final : public OrlanPluginDelegate, public std::enable_shared_from_this<TerminalHost> {
 public:
  TerminalHost(const RunOptions& options, Inputs inputs, linuxphone::LinuxPhone& phone, Runtime& runtime,
               report::ReportCollector& collector, Narrator& narrator);

  /// Returns when all is over. False: the library could not start.
  bool run();

  void didAuthenticate(OrlanPlugin& plugin, const std::string& deviceID, const std::string& orlanID) override;
  void didFailWith(OrlanPlugin& plugin, const Error& error) override;

 private:
  enum class Phase { starting, walking, ended, stopped };

  void startLibrary();
  void walkOnFirstCampaigns();
  void walk();
  void arrived();
  void end(Phase how, const std::string& why);
  void press(std::string_view keys);
  [[nodiscard]] std::string hint() const;
  void showProgress(bool keys);
  [[nodiscard]] bool isOver() const { return phase_ >= Phase::ended; }

  const RunOptions& options_;
  const Inputs inputs_;
  linuxphone::LinuxPhone& phone_;
  Runtime& runtime_;
  report::ReportCollector& collector_;
  Narrator& narrator_;
  const TimePoint begin_;
  DetailsScreen screen_;
  Person person_;
  KeyInput keys_;
  Phase phase_ = Phase::starting;
  std::string why_;  // it ended
  bool failed_ = false;
  std::size_t ahead_ = 1;  // the walk's end and the steps of the script
  Subscription beginning_;
  Subscription ending_;
  std::vector<Subscription> script_;
  SubscriptionBag subscriptions_;
};

}  // namespace orlan::run
