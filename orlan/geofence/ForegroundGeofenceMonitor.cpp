#include "orlan/geofence/ForegroundGeofenceMonitor.hpp"

#include <fmt/format.h>

#include <unordered_set>
#include <utility>

#include "orlan/base/text.hpp"
#include "orlan/geofence/CampaignReactions.hpp"
#include "orlan/geofence/HopLog.hpp"
#include "orlan/geofence/TrackedPolygons.hpp"

namespace orlan {
namespace {

double averageConfidence(const std::vector<GeofenceResult>& results) {
  if (results.empty()) return 0.0;
  double sum = 0.0;
  for (const auto& result : results) sum += result.confidence;
  return sum / static_cast<double>(results.size());
}

}  // namespace

struct ForegroundGeofenceMonitor::Parts final : LocationManagerDelegate {
  class Hooks;

  Parts(MainLoop& mainLoop, LocationService& locationService, const ReactionServices& reactionServices,
        Lazy<LocationTrackingReliability>& reliabilitySlot)
      : main(mainLoop),
        locations(locationService),
        services(reactionServices),
        reliability(reliabilitySlot),
        reactions(mainLoop, reactionServices, ReactionStyle::foreground) {}

  void didUpdateLocations(LocationManager&, std::span<const Location> batch) override;

  LocationManager& locationManager(const std::shared_ptr<Parts>& self);
  void take(const Location& fix);
  void react(const GeofenceResult& result);

  MainLoop& main;
  LocationService& locations;
  const ReactionServices services;
  Lazy<LocationTrackingReliability>& reliability;
  CampaignReactions reactions;

  std::weak_ptr<ForegroundGeofenceDelegate> delegate;
  std::shared_ptr<LocationManager> manager;  // made at first use
  std::shared_ptr<const TrackedPolygons> tracked = std::make_shared<const TrackedPolygons>();
  std::unordered_set<std::int64_t> active;  // campaigns the user is inside
  HopLog hops;
  bool isInForeground = false;
};

/// One crossing as the foreground monitor sees it: by a detection, at the end of the last hop.
class ForegroundGeofenceMonitor::Parts::Hooks final : public ReactionHooks {
 public:
  Hooks(Parts& parts, const CampaignData::Campaign& campaign, const GeofenceResult& result)
      : parts_(parts), campaign_(campaign), result_(result) {}

  [[nodiscard]] std::string lineSuffix() const override {
    const auto& at = parts_.hops.lastLoggedLoc();
    return fmt::format(" (accuracy: {}m)", text::fixed(at ? at->horizontalAccuracy : 0.0, 0));
  }

  void tellDelegate() override {
    const auto listener = parts_.delegate.lock();
    if (!listener) return;
    const auto tell = result_.isInside ? &ForegroundGeofenceDelegate::didEnterCampaign
                                       : &ForegroundGeofenceDelegate::didExitCampaign;
    (listener.get()->*tell)(campaign_.campaign.campaignId, campaign_.location.locationId);
  }

  void beforeReports() override {
    parts_.reliability->addPendingEvent(
        result_.isInside ? "geofence_entry" : "geofence_exit",
        json::Object{{"campaign_id", campaign_.campaign.campaignId},
                     {"location_id", campaign_.location.locationId},
                     {"confidence", result_.confidence},
                     {"detection_method", result_.detectionMethod},
                     {"timestamp", secondsSince1970(parts_.services.clock.now())}},
        LocationTrackingReliability::EventPriority::high);
  }

  [[nodiscard]] std::optional<Coordinate> position() const override {
    const auto& at = parts_.hops.lastLoggedLoc();
    return at ? std::optional(at->coordinate) : std::nullopt;
  }

 private:
  Parts& parts_;
  const CampaignData::Campaign& campaign_;
  const GeofenceResult& result_;
};

void ForegroundGeofenceMonitor::Parts::didUpdateLocations(LocationManager&, std::span<const Location> batch) {
  const Turn turn = main.enter();
  if (batch.empty() || !isInForeground) return;
  take(Location(batch.front()));  // a copy: whoever reacts may end the batch
}

void ForegroundGeofenceMonitor::Parts::take(const Location& fix) {
  LocationTrackingReliability& detection = *reliability;
  detection.updateLocation(fix);
  if (const auto line = hops.logHop(fix)) services.logger.log(*line);
  const auto results = detection.detectGeofences(fix, tracked->set());
  std::unordered_set<std::int64_t> inside;
  for (const auto& result : results) {
    if (result.isInside) inside.insert(result.campaignId);
    if (result.isInside != active.contains(result.campaignId)) react(result);
  }
  active = std::move(inside);
  services.logger.breadcrumb(fmt::format("🎯 Enhanced detection - accuracy: {}m, confidence: {}",
                                         text::fromDouble(fix.horizontalAccuracy),
                                         text::fromDouble(averageConfidence(results))));
}

void ForegroundGeofenceMonitor::Parts::react(const GeofenceResult& result) {
  const SharedCampaign* const found = tracked->find(result.campaignId);
  if (found == nullptr) return;  // somebody's reaction to this fix replaced what is tracked
  const SharedCampaign campaign = *found;
  Hooks hooks(*this, *campaign, result);
  if (result.isInside) {
    reactions.entered(*campaign, hooks);
  } else {
    reactions.exited(*campaign, hooks);
  }
}

LocationManager& ForegroundGeofenceMonitor::Parts::locationManager(const std::shared_ptr<Parts>& self) {
  if (!manager) {
    manager = locations.makeManager("foreground");
    manager->setDelegate(self);
    manager->setDesiredAccuracy(accuracyNearestTenMeters);
    manager->setDistanceFilter(10.0);
    manager->setAllowsBackgroundUpdates(false);
  }
  return *manager;
}

ForegroundGeofenceMonitor::ForegroundGeofenceMonitor(MainLoop& main, LocationService& locations,
                                                     const ReactionServices& services,
                                                     Lazy<LocationTrackingReliability>& reliability)
    : parts_(std::make_shared<Parts>(main, locations, services, reliability)) {
  const Turn turn = main.enter();
}

ForegroundGeofenceMonitor::~ForegroundGeofenceMonitor() = default;

std::shared_ptr<ForegroundGeofenceDelegate> ForegroundGeofenceMonitor::delegate() const {
  const Turn turn = parts_->main.enter();
  return parts_->delegate.lock();
}

void ForegroundGeofenceMonitor::setDelegate(std::weak_ptr<ForegroundGeofenceDelegate> delegate) {
  const Turn turn = parts_->main.enter();
  parts_->delegate = std::move(delegate);
}

Publisher<Crossing>& ForegroundGeofenceMonitor::enterPublisher() {
  return parts_->reactions.enterPublisher();
}

Publisher<Crossing>& ForegroundGeofenceMonitor::exitPublisher() {
  return parts_->reactions.exitPublisher();
}

void ForegroundGeofenceMonitor::start(const std::shared_ptr<LocationManager>& /*with*/) {
  const Turn turn = parts_->main.enter();
  parts_->isInForeground = true;
  parts_->locationManager(parts_).startUpdatingLocation();
  parts_->services.logger.breadcrumb("🟢 FG-Monitor started (live GPS)");
}

bool ForegroundGeofenceMonitor::isRunning() const {
  const Turn turn = parts_->main.enter();
  return parts_->isInForeground;
}

void ForegroundGeofenceMonitor::stop() {
  const Turn turn = parts_->main.enter();
  parts_->isInForeground = false;
  parts_->locationManager(parts_).stopUpdatingLocation();
  parts_->services.logger.breadcrumb("🔴 FG-Monitor stopped");
}

void ForegroundGeofenceMonitor::updatePolygons(const std::vector<CampaignPolygon>& polygons) {
  takePolygons(std::make_shared<const TrackedPolygons>(polygons));
}

void ForegroundGeofenceMonitor::takePolygons(const std::shared_ptr<const TrackedPolygons>& polygons) {
  const Turn turn = parts_->main.enter();
  parts_->tracked = polygons;
  parts_->services.logger.breadcrumb(
      fmt::format("🎯 FG-Monitor loaded {} polygon geofences", polygons->set().size()));
}

bool ForegroundGeofenceMonitor::shouldSendNotification(std::int64_t campaignId, std::string_view activation) {
  const Turn turn = parts_->main.enter();
  return parts_->reactions.cooldown().allows(campaignId, activation);
}

void ForegroundGeofenceMonitor::sendLocalNotifications(const CampaignData::Campaign& campaign,
                                                       std::string_view activation) {
  const Turn turn = parts_->main.enter();
  parts_->reactions.poster().post(campaign, activation);
}

void ForegroundGeofenceMonitor::clearCooldown() {
  const Turn turn = parts_->main.enter();
  parts_->reactions.cooldown().clear();
}

}  // namespace orlan
