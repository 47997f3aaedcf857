#include "orlan/geofence/CampaignReactions.hpp"

#include <fmt/format.h>

#include "orlan/base/text.hpp"
#include "orlan/geofence/activations.hpp"

namespace orlan {

CampaignReactions::CampaignReactions(MainLoop& main, const ReactionServices& services,
                                     const ReactionStyle& style)
    : services_(services),
      style_(style),
      cooldown_(services, style.cooldown),
      poster_(main, services, style) {}

void CampaignReactions::entered(const CampaignData::Campaign& campaign, ReactionHooks& hooks) {
  const std::int64_t id = campaign.campaign.campaignId;
  const TimePoint now = services_.clock.now();
  entryTimestamps_[id] = now;
  logCrossing(style_.entered, id, now, since(exitTimestamps_, id, now, " (re-entry after "), hooks);
  hooks.afterLine();
  hooks.tellDelegate();
  enterSubject_.send({id, campaign.location.locationId});
  postAndCount(campaign, activations::onEnter);
  hooks.beforeReports();
  reportGeo(ActivityType::geofence_entry, campaign.location.locationId, hooks.position());
}

void CampaignReactions::exited(const CampaignData::Campaign& campaign, ReactionHooks& hooks) {
  const std::int64_t id = campaign.campaign.campaignId;
  const TimePoint now = services_.clock.now();
  exitTimestamps_[id] = now;
  logCrossing(style_.exited, id, now, since(entryTimestamps_, id, now, style_.dwellNote), hooks);
  hooks.afterLine();
  hooks.tellDelegate();
  exitSubject_.send({id, campaign.location.locationId});
  if (cooldown_.allows(id, activations::onExit)) {
    postAndCount(campaign, activations::onExit);
  } else {
    services_.logger.breadcrumb(style_.exitSkipped);
  }
  hooks.beforeReports();
  reportGeo(ActivityType::geofence_exit, campaign.location.locationId, hooks.position());
}

std::string CampaignReactions::since(const Times& times, std::int64_t campaignId, TimePoint now,
                                     std::string_view words) const {
  const auto then = times.find(campaignId);
  if (then == times.end()) return {};
  return fmt::format("{}{}s)", words, text::fixed(seconds(now - then->second), style_.noteDecimals));
}

void CampaignReactions::logCrossing(std::string_view opening, std::int64_t campaignId, TimePoint now,
                                    std::string_view note, const ReactionHooks& hooks) {
  const auto time = localTimeOfDay(now, services_.clock.offsetFromUtc(now));
  services_.logger.breadcrumb(
      fmt::format("{}{} at {}{}{}", opening, campaignId, time, note, hooks.lineSuffix()));
}

void CampaignReactions::postAndCount(const CampaignData::Campaign& campaign, std::string_view activation) {
  poster_.post(campaign, activation);
  (services_.counter.*style_.count)(activation);
}

void CampaignReactions::reportGeo(ActivityType crossing, std::int64_t locationId,
                                  std::optional<Coordinate> position) {
  const auto say = [this](std::string_view line) {
    if (!line.empty()) services_.logger.breadcrumb(line);
  };
  if (!position) return say(style_.notReportingGeo);
  say(style_.reportingGeo);
  const auto report = [&](ActivityType activity, NotificationType type) {
    services_.api->reportGeoActivity(activity, locationId, -1, type, position->latitude, position->longitude);
  };
  report(crossing, style_.crossingType);
  report(ActivityType::location_update, NotificationType::location);
}

}  // namespace orlan
