#include "orlan/geofence/CooldownCheck.hpp"

#include <fmt/format.h>

#include "orlan/geofence/activations.hpp"

namespace orlan {

namespace {

/// Towards zero.
std::int64_t wholeSeconds(Duration duration) {
  return std::chrono::duration_cast<std::chrono::seconds>(duration).count();
}

}  // namespace

CooldownCheck::CooldownCheck(const ReactionServices& services, std::string_view marker)
    : clock_(services.clock),
      logger_(services.logger),
      store_(services.store),
      marker_(marker),
      appStartTime_(services.clock.now()) {}

bool CooldownCheck::allows(std::int64_t campaignId, std::string_view activation) {
  if (activation != activations::onExit) {
    logger_.breadcrumb(fmt::format("{}Allowing {} notification for campaign {} - no cooldown on entry",
                                   marker_, activation, campaignId));
    return true;
  }
  return allowsExit(campaignId);
}

bool CooldownCheck::allowsExit(std::int64_t campaignId) {
  const TimePoint now = clock_.now();
  const auto decision = ExitCooldown::decide(now, appStartTime_, store_.appStartTime(),
                                             store_.lastNotification(campaignId, activations::onExit));
  switch (decision.verdict) {
    case ExitCooldown::Verdict::restarted:
      logger_.breadcrumb(
          fmt::format("{}App restarted, clearing cooldown for campaign {}", marker_, campaignId));
      store_.removeLastNotification(campaignId, activations::onExit);
      store_.setLastNotification(campaignId, activations::onExit, now);
      store_.setAppStartTime(appStartTime_);
      return true;
    case ExitCooldown::Verdict::denied:
      store_.setAppStartTime(appStartTime_);
      logger_.breadcrumb(fmt::format(
          "{}Skipping ON_EXIT notification for campaign {} - cooldown active ({}s < {}s)", marker_,
          campaignId, wholeSeconds(decision.elapsed), wholeSeconds(ExitCooldown::notificationCooldown)));
      return false;
    case ExitCooldown::Verdict::allowed:
      break;
  }
  store_.setAppStartTime(appStartTime_);
  store_.setLastNotification(campaignId, activations::onExit, now);
  logger_.breadcrumb(
      fmt::format("{}Allowing ON_EXIT notification for campaign {} - cooldown passed", marker_, campaignId));
  return true;
}

void CooldownCheck::clear() {
  store_.clear();
  logger_.breadcrumb(fmt::format("{}Cleared all notification cooldowns", marker_));
}

}  // namespace orlan
