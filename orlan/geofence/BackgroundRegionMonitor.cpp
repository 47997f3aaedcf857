#include "orlan/geofence/BackgroundRegionMonitor.hpp"

#include <fmt/format.h>

#include <string>
#include <utility>

#include "orlan/geofence/CampaignReactions.hpp"
#include "orlan/geofence/ExitDetection.hpp"
#include "orlan/geofence/TrackedPolygons.hpp"
#include "orlan/geofence/WatchedRegions.hpp"

namespace orlan {

struct BackgroundRegionMonitor::Parts final : LocationManagerDelegate {
  class Hooks;

  Parts(MainLoop& mainLoop, LocationService& locations, const ReactionServices& services)
      : main(mainLoop),
        logger(services.logger),
        lm(locations.makeManager("background")),
        exitDetection(mainLoop, *lm, services.logger),
        regions(*lm, exitDetection, services.logger),
        reactions(mainLoop, services, ReactionStyle::background) {}

  void didEnterRegion(LocationManager& from, const CircularRegion& region) override;
  void didExitRegion(LocationManager& from, const CircularRegion& region) override;

  MainLoop& main;
  Logger& logger;
  const std::shared_ptr<LocationManager> lm;
  ExitDetection exitDetection;
  WatchedRegions regions;
  CampaignReactions reactions;
  std::weak_ptr<BackgroundGeofenceDelegate> delegate;
  bool isPaused = false;
};

/// One crossing as the background monitor sees it: of a region, wherever the phone is known to be.
class BackgroundRegionMonitor::Parts::Hooks final : public ReactionHooks {
 public:
  enum class Direction { entry, exit };

  Hooks(Parts& parts, Direction direction, std::string identifier, SharedCampaign campaign,
        const LocationManager& manager)
      : parts_(parts),
        direction_(direction),
        identifier_(std::move(identifier)),
        campaign_(std::move(campaign)),
        manager_(manager) {}

  void afterLine() override {
    if (direction_ == Direction::entry) {
      parts_.regions.enter(identifier_);
    } else {
      parts_.regions.leave(identifier_);
    }
  }

  void tellDelegate() override {
    const auto listener = parts_.delegate.lock();
    if (!listener) return;
    const auto tell = direction_ == Direction::entry ? &BackgroundGeofenceDelegate::didEnterRegion
                                                     : &BackgroundGeofenceDelegate::didExitRegion;
    (listener.get()->*tell)(campaign_->campaign.campaignId, campaign_->location.locationId);
  }

  void beforeReports() override {
    if (direction_ == Direction::entry || parts_.regions.isInsideAny()) return;
    parts_.logger.breadcrumb("📍 No longer inside any regions, stopping location updates");
    parts_.exitDetection.stop();
  }

  [[nodiscard]] std::optional<Coordinate> position() const override {
    const auto at = manager_.location();
    return at ? std::optional(at->coordinate) : std::nullopt;
  }

  [[nodiscard]] const CampaignData::Campaign& campaign() const { return *campaign_; }

 private:
  Parts& parts_;
  const Direction direction_;
  const std::string identifier_;
  const SharedCampaign campaign_;  // of its own: who reacts may replace what is watched
  const LocationManager& manager_;
};

void BackgroundRegionMonitor::Parts::didEnterRegion(LocationManager& from, const CircularRegion& region) {
  const Turn turn = main.enter();
  if (isPaused) {
    logger.breadcrumb("📥 BG didEnterRegion - SKIPPING (paused for foreground)");
    return;
  }
  const SharedCampaign* const campaign = regions.find(region.identifier);
  if (campaign == nullptr) return;
  if (regions.isInside(region.identifier)) {
    logger.breadcrumb(fmt::format("📥 BG didEnterRegion camp {} - SKIPPING (preserved from reset)",
                                  (*campaign)->campaign.campaignId));
    return;
  }
  Hooks hooks(*this, Hooks::Direction::entry, region.identifier, *campaign, from);
  reactions.entered(hooks.campaign(), hooks);
  exitDetection.start();
}

void BackgroundRegionMonitor::Parts::didExitRegion(LocationManager& from, const CircularRegion& region) {
  const Turn turn = main.enter();
  if (isPaused) {
    logger.breadcrumb("📤 BG didExitRegion - SKIPPING (paused for foreground)");
    return;
  }
  const SharedCampaign* const campaign = regions.find(region.identifier);
  if (campaign == nullptr) return;
  if (!regions.isInside(region.identifier)) {
    logger.breadcrumb(fmt::format("📤 BG didExitRegion camp {} - SKIPPING (false exit from reset)",
                                  (*campaign)->campaign.campaignId));
    return;
  }
  Hooks hooks(*this, Hooks::Direction::exit, region.identifier, *campaign, from);
  reactions.exited(hooks.campaign(), hooks);
}

BackgroundRegionMonitor::BackgroundRegionMonitor(MainLoop& main, LocationService& locations,
                                                 const ReactionServices& services) {
  const Turn turn = main.enter();
  parts_ = std::make_shared<Parts>(main, locations, services);
}

BackgroundRegionMonitor::~BackgroundRegionMonitor() = default;

std::shared_ptr<BackgroundGeofenceDelegate> BackgroundRegionMonitor::delegate() const {
  const Turn turn = parts_->main.enter();
  return parts_->delegate.lock();
}

void BackgroundRegionMonitor::setDelegate(std::weak_ptr<BackgroundGeofenceDelegate> delegate) {
  const Turn turn = parts_->main.enter();
  parts_->delegate = std::move(delegate);
}

Publisher<Crossing>& BackgroundRegionMonitor::enterPublisher() {
  return parts_->reactions.enterPublisher();
}

Publisher<Crossing>& BackgroundRegionMonitor::exitPublisher() {
  return parts_->reactions.exitPublisher();
}

Publisher<std::vector<Circle>>& BackgroundRegionMonitor::circlesPublisher() {
  return parts_->regions.circlesPublisher();
}

void BackgroundRegionMonitor::updateRegions(const std::vector<CampaignPolygon>& polygons) {
  const Turn turn = parts_->main.enter();
  parts_->regions.update(polygons, parts_);
}

void BackgroundRegionMonitor::takePolygons(const std::shared_ptr<const TrackedPolygons>& polygons) {
  const auto list = polygons->set().polygons();
  updateRegions({list.begin(), list.end()});
}

void BackgroundRegionMonitor::pauseMonitoring() {
  const Turn turn = parts_->main.enter();
  if (parts_->isPaused) return;
  parts_->logger.breadcrumb("⏸️  BG-Monitor paused (foreground mode)");
  parts_->isPaused = true;
}

void BackgroundRegionMonitor::resumeMonitoring() {
  const Turn turn = parts_->main.enter();
  if (!parts_->isPaused) return;
  parts_->logger.breadcrumb("▶️  BG-Monitor resumed (background mode)");
  parts_->isPaused = false;
}

void BackgroundRegionMonitor::sendLocalNotifications(const CampaignData::Campaign& campaign,
                                                     std::string_view activation) {
  const Turn turn = parts_->main.enter();
  parts_->reactions.poster().post(campaign, activation);
}

bool BackgroundRegionMonitor::shouldSendNotification(std::int64_t campaignId, std::string_view activation) {
  const Turn turn = parts_->main.enter();
  return parts_->reactions.cooldown().allows(campaignId, activation);
}

void BackgroundRegionMonitor::clearCooldown() {
  const Turn turn = parts_->main.enter();
  parts_->reactions.cooldown().clear();
}

}  // namespace orlan
