#include "tools/orlan/run/TerminalHost.hpp"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "phones/linux/SignalStop.hpp"
#include "tools/orlan/run/Keyboard.hpp"
#include "tools/orlan/run/complain.hpp"

namespace orlan::run {

namespace {

// Real time: these wait for the network.
constexpr std::chrono::milliseconds longestWaitForCampaigns(5000);
constexpr std::chrono::milliseconds longestWaitForAnswers(1500);
constexpr std::chrono::milliseconds progressInterval(200);

// The phone's time: a notification of the last second comes up a second later.
constexpr Duration afterTheWalk = std::chrono::seconds(3);

constexpr const char* hintOfKeys =
    "  b background  f front  s stand  w walk  1… tap  l link  m media  q quit";

constexpr const char* defaultKey = "development-key";

}  // namespace

TerminalHost::TerminalHost(const RunOptions& options, Inputs inputs, linuxphone::LinuxPhone& phone,
                           Runtime& runtime, report::ReportCollector& collector, Narrator& narrator)
    : options_(options),
      inputs_(std::move(inputs)),
      phone_(phone),
      runtime_(runtime),
      collector_(collector),
      narrator_(narrator),
      begin_(phone.clock().now()),
      screen_(runtime.services(), collector, narrator),
      person_(phone, runtime.services(), collector, screen_, options.speed,
              [this] { end(Phase::stopped, "stopped"); }) {}

bool TerminalHost::run() {
  linuxphone::EventLoop& loop = phone_.main();
  const linuxphone::SignalStop stopper(loop, [this](int) { end(Phase::stopped, "stopped"); });
  Keyboard keyboard(loop, [this](std::string_view keys) { press(keys); });
  walkOnFirstCampaigns();
  startLibrary();
  loop.runUntil([this] { return phase_ != Phase::starting; }, longestWaitForCampaigns);
  walk();  // without campaigns, too: they may come on the way
  while (!loop.runUntil([this] { return isOver(); }, progressInterval)) {
    keyboard.refresh();
    showProgress(keyboard.isThere());
    if (narrator_.trouble() != 0) end(Phase::stopped, "nobody reads what is told");
  }
  phone_.setTimeScale(1);
  const auto isQuiet = [this] {
    return collector_.openRequests() == 0 && !screen_.isSending() && !person_.isWaiting();
  };
  loop.runUntil([&] { return phase_ == Phase::stopped || isQuiet(); }, longestWaitForAnswers);
  collector_.note("end", why_);
  subscriptions_ = {};
  return !failed_;
}

void TerminalHost::startLibrary() {
  OrlanPlugin& plugin = *runtime_.services().plugin;
  if (options_.config) {
    plugin.start(options_.environment, options_.segments, weak_from_this());
  } else {
    plugin.start(options_.apiKey.value_or(defaultKey), options_.environment, options_.segments,
                 weak_from_this());
  }
}

void TerminalHost::walkOnFirstCampaigns() {
  runtime_.services().geofence.onBuilt([this](GeofenceService& geofence) {
    subscriptions_.add(geofence.campaigns().subscribe([this](const CampaignData&) {
      if (phase_ != Phase::starting) return;
      beginning_ = phone_.main().after(Duration(0), [this] { walk(); });  // when the monitors have them, too
    }));
  });
}

void TerminalHost::walk() {
  if (phase_ != Phase::starting) return;
  phase_ = Phase::walking;
  phone_.setTimeScale(options_.speed);  // until here the network set the pace
  phone_.player().play(inputs_.track, [this] { arrived(); });
  ahead_ += inputs_.script.size();
  for (const simulate::Step& step : inputs_.script) {
    script_.push_back(phone_.main().after(step.at, [this, &step] {
      if (!isOver()) person_.perform(step);
      arrived();
    }));
  }
}

/// At the end of the walk, or behind a step of the script.
void TerminalHost::arrived() {
  if (--ahead_ > 0) return;
  ending_ = phone_.main().after(afterTheWalk, [this] { end(Phase::ended, "walked to the end"); });
}

void TerminalHost::end(Phase how, const std::string& why) {
  if (isOver()) return;
  phase_ = how;
  why_ = why;
}

void TerminalHost::press(std::string_view keys) {
  keys_.take(
      keys, [this] { return screen_.isAsking(); },
      [this](const Command& command) {
        if (!isOver()) person_.perform(command);
      });
  showProgress(true);
}

std::string TerminalHost::hint() const {
  if (screen_.isAsking()) return "  answer › " + keys_.typed();
  if (!keys_.typed().empty()) return "  tap #" + keys_.typed();
  return hintOfKeys;
}

void TerminalHost::showProgress(bool keys) {
  if (!isOurTerminal(STDOUT_FILENO)) return;
  const auto& fixes = inputs_.track.fixes;
  const double length = seconds(fixes.back().timestamp - fixes.front().timestamp);
  const double share = length > 0 ? std::min(1.0, seconds(phone_.player().walked()) / length) : 1.0;
  narrator_.progress(share, phone_.clock().now() - begin_, keys ? hint() : std::string());
}

void TerminalHost::didAuthenticate(OrlanPlugin&, const std::string& deviceID, const std::string& orlanID) {
  collector_.note("start", "authenticated as device " + deviceID + " (" + orlanID + ")");
}

void TerminalHost::didFailWith(OrlanPlugin&, const Error& error) {
  complain("the library could not start: " + error.description);
  failed_ = true;
  end(Phase::ended, "could not start");
}

}  // namespace orlan::run
