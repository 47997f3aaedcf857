#include "orlan/geofence/WatchedRegions.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <iterator>

#include "orlan/geofence/RegionIdentifier.hpp"
#include "orlan/geofence/RegionSelection.hpp"

namespace orlan {

using regionSelection::mostRegions;

namespace {

/// Ascending, each once.
std::vector<std::int64_t> idsOf(const std::vector<CampaignPolygon>& polygons) {
  std::vector<std::int64_t> ids;
  ids.reserve(polygons.size());
  for (const auto& entry : polygons) ids.push_back(entry.campaign->campaign.campaignId);
  std::sort(ids.begin(), ids.end());
  ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
  return ids;
}

}  // namespace

void WatchedRegions::update(const std::vector<CampaignPolygon>& polygons,
                            const std::weak_ptr<LocationManagerDelegate>& delegate) {
  auto ids = idsOf(polygons);
  if (ids == lastCampaignIds_) {
    logger_.breadcrumb(fmt::format("🧲 BG-Monitor: campaigns unchanged ({}), skipping reset", ids.size()));
    return;
  }
  const std::size_t previously = lastCampaignIds_.size();
  lastCampaignIds_ = std::move(ids);
  if (previously != 0) {
    logger_.breadcrumb(fmt::format("🧲 BG-Monitor: campaigns changed (was {}, now {})", previously,
                                   lastCampaignIds_.size()));
  }

  const std::uint64_t round = ++round_;
  const auto preserved = campaignsInside();
  for (const auto& region : lm_.monitoredRegions()) lm_.stopMonitoring(region.identifier);
  idMap_.clear();
  circles_.clear();
  circlesSubject_.send(circles_);
  if (round != round_) return;
  if (preserved.empty()) {
    exitDetection_.stop();
  } else {
    logger_.breadcrumb(
        fmt::format("🔄 Keeping location updates active (user inside {} regions)", preserved.size()));
  }
  logger_.breadcrumb(fmt::format(
      "🧲 BG-Monitor setting up {} campaigns (iOS limit: 20 circular regions max)", polygons.size()));
  for (const auto& entry : chosen(polygons)) {
    watch(entry, preserved, round);
    if (round != round_) return;
  }
  conclude(polygons.size(), delegate);
}

std::vector<std::int64_t> WatchedRegions::campaignsInside() {
  std::vector<std::int64_t> campaigns;
  for (const auto& identifier : regionsCurrentlyInside_) {
    if (const auto id = regionIdentifier::campaignId(identifier)) campaigns.push_back(*id);
  }
  if (!campaigns.empty()) {
    logger_.breadcrumb(fmt::format("🔄 Preserving state: user inside campaigns {}", campaigns));
  }
  return campaigns;
}

std::vector<CampaignPolygon> WatchedRegions::chosen(const std::vector<CampaignPolygon>& polygons) {
  if (polygons.size() <= mostRegions) return polygons;
  if (const auto position = lm_.location()) {
    logger_.breadcrumb("🧲 BG-Monitor: selecting nearest campaigns for 20-slot iOS region cap");
    return regionSelection::nearest(polygons, position->coordinate);
  }
  logger_.breadcrumb(
      "🧲 BG-Monitor: no location available, using default campaign order for 20-slot limit");
  return {polygons.begin(), polygons.begin() + mostRegions};
}

void WatchedRegions::watch(const CampaignPolygon& polygon, const std::vector<std::int64_t>& preserved,
                           std::uint64_t round) {
  const auto circle = regionSelection::circleFor(polygon.polygon);
  if (!circle) return;
  circles_.push_back(*circle);
  circlesSubject_.send(circles_);
  if (round != round_) return;

  const std::int64_t campaignId = polygon.campaign->campaign.campaignId;
  const auto identifier = regionIdentifier::of(campaignId, polygon.campaign->location.locationId);
  lm_.startMonitoring({identifier, *circle});
  idMap_.insert_or_assign(identifier, polygon.campaign);
  if (std::find(preserved.begin(), preserved.end(), campaignId) != preserved.end()) {
    regionsCurrentlyInside_.insert(identifier);
    logger_.breadcrumb(fmt::format("🔄 Restored inside state for camp {}", campaignId));
  }
}

void WatchedRegions::conclude(std::size_t offered, const std::weak_ptr<LocationManagerDelegate>& delegate) {
  std::erase_if(regionsCurrentlyInside_,
                [this](const auto& identifier) { return !idMap_.contains(identifier); });
  if (regionsCurrentlyInside_.empty()) {
    exitDetection_.stop();  // kept so far, but who was inside is inside nothing that is watched
  } else if (!exitDetection_.isRunning()) {
    logger_.breadcrumb(fmt::format("🔄 Restarting location updates (user inside {} regions)",
                                   regionsCurrentlyInside_.size()));
    exitDetection_.start();
  }
  if (offered > mostRegions) {
    logger_.breadcrumb(
        fmt::format("⚠️  {} campaigns available, monitoring 20 only ({}, iOS platform limit)", offered,
                    lm_.location() ? "nearest-first" : "default order"));
  }
  lm_.setDelegate(delegate);
  lm_.setAllowsBackgroundUpdates(true);
  logger_.breadcrumb(fmt::format("🧲 BG-Monitor tracking {} circular regions", circles_.size()));
}

const SharedCampaign* WatchedRegions::find(const std::string& identifier) const {
  const auto found = idMap_.find(identifier);
  return found == idMap_.end() ? nullptr : &found->second;
}

}  // namespace orlan
