#include "tools/orlan/run/TerminalHost.hpp"

#include <algorithm>
#include <utility>

#include "phones/linux/SignalStop.hpp"
#include "tools/orlan/run/complain.hpp"

namespace orlan::run {

namespace {

// Real time: these wait for the network.
constexpr std::chrono::milliseconds longestWaitForCampaigns(5000);
constexpr std::chrono::milliseconds longestWaitForAnswers(1500);
constexpr std::chrono::milliseconds progressInterval(200);

// The phone's time: a notification of the last second comes up a second later.
constexpr Duration afterTheWalk = std::chrono::seconds(3);

constexpr const char* defaultKey = "development-key";

}  // namespace

TerminalHost::TerminalHost(const RunOptions& options, linuxphone::Track track, linuxphone::LinuxPhone& phone,
                           Runtime& runtime, report::ReportCollector& collector, Narrator& narrator)
    : options_(options),
      track_(std::move(track)),
      phone_(phone),
      runtime_(runtime),
      collector_(collector),
      narrator_(narrator),
      begin_(phone.clock().now()) {}

bool TerminalHost::run() {
  linuxphone::EventLoop& loop = phone_.main();
  const linuxphone::SignalStop stopper(loop, [this](int) { end(Phase::stopped, "stopped"); });
  walkOnFirstCampaigns();
  startLibrary();
  loop.runUntil([this] { return phase_ != Phase::starting; }, longestWaitForCampaigns);
  walk();  // without campaigns, too: they may come on the way
  while (!loop.runUntil([this] { return isOver(); }, progressInterval)) showProgress();
  phone_.setTimeScale(1);
  loop.runUntil([this] { return phase_ == Phase::stopped || collector_.openRequests() == 0; },
                longestWaitForAnswers);
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
  phone_.play(track_, [this] {
    ending_ = phone_.main().after(afterTheWalk, [this] { end(Phase::ended, "walked to the end"); });
  });
}

void TerminalHost::end(Phase how, const std::string& why) {
  if (isOver()) return;
  phase_ = how;
  collector_.note("end", why);
}

void TerminalHost::showProgress() {
  const double length = seconds(track_.fixes.back().timestamp - track_.fixes.front().timestamp);
  const Duration elapsed = phone_.clock().now() - begin_;
  narrator_.progress(length > 0 ? std::min(1.0, seconds(elapsed) / length) : 1.0, elapsed);
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
