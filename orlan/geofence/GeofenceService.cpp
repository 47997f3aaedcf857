#include "orlan/geofence/GeofenceService.hpp"

#include <fmt/format.h>

#include <utility>

#include "orlan/base/Lifetime.hpp"
#include "orlan/geofence/CampaignFetch.hpp"
#include "orlan/geofence/GeofenceRequest.hpp"
#include "orlan/geofence/PushDispatch.hpp"
#include "orlan/geofence/RefreshPolicy.hpp"

namespace orlan {

struct GeofenceService::Parts {
  Parts(const Platform& platform, const Neighbours& others)
      : phone(platform),
        neighbours(others),
        fetcher(platform.main, platform.http, others.cache, others.logger),
        push(platform, others.logger, others.api) {}

  void fetch(const std::string& apiKey, std::string_view reason);
  void request(const std::string& apiKey, const Location& fix, std::string_view reason);
  void finish(const Result<CampaignFetch::Answer>& answer, std::string_view reason);
  void publish(const CampaignAnswer& answer);
  void setCurrent(const CampaignAnswer& answer);
  void setPolygons(const CampaignAnswer& answer);
  void restartTimer();
  void observeApplication();
  void takeFix(const Location& fix);

  const Platform phone;
  const Neighbours neighbours;

  std::shared_ptr<const CampaignData> current;
  CurrentValue<std::shared_ptr<const CampaignData>> currentSubject;
  std::vector<Polygon> polygons;
  CurrentValue<std::vector<Polygon>> polygonsSubject;
  Subject<CampaignData> campaigns;

  Config::Environment env = Config::Environment::staging;
  std::string storedApiKey;  // empty: not started
  std::shared_ptr<LocationManager> storedLocationManager;
  std::optional<Location> lastKnownLocation;
  std::optional<TimePoint> lastFetchAt;
  std::optional<Location> lastFetchLocation;
  bool isFetchInFlight = false;  // from the request to the end of what its answer sets off

  CampaignFetch fetcher;
  PushDispatch push;
  Subscription locationUpdateCancellable;
  Subscription timerCancellable;
  SubscriptionBag appStateObservers;
  Lifetime lifetime;
};

GeofenceService::GeofenceService(const Platform& phone, const Neighbours& neighbours)
    : parts_(std::make_unique<Parts>(phone, neighbours)) {
  const Turn turn = phone.main.enter();
  const auto cached = parts_->fetcher.cached();
  if (!cached) return;
  parts_->setCurrent(*cached);
  parts_->setPolygons(*cached);
}

GeofenceService::~GeofenceService() = default;

void GeofenceService::start(const std::string& apiKey, Config::Environment env,
                            std::shared_ptr<LocationManager> locationManager) {
  Parts& parts = *parts_;
  const Turn turn = parts.phone.main.enter();
  parts.env = env;
  parts.storedApiKey = apiKey;
  parts.storedLocationManager = std::move(locationManager);
  parts.lastKnownLocation =
      parts.storedLocationManager ? parts.storedLocationManager->location() : std::nullopt;
  parts.locationUpdateCancellable =
      parts.neighbours.locations.subscribe([&parts](const std::optional<Location>& fix) {
        if (!fix) return;
        // On a turn of its own: the current one comes inside this call, and waits for the fetch of the start.
        parts.phone.main.async([&parts, alive = parts.lifetime.token(), fix = *fix] {
          if (alive) parts.takeFix(fix);
        });
      });
  parts.fetch(apiKey, "start");
  parts.restartTimer();
  parts.observeApplication();
}

void GeofenceService::refetch() {
  const Turn turn = parts_->phone.main.enter();
  if (parts_->storedApiKey.empty()) {
    parts_->neighbours.logger.error("refetchGeofence: SDK not initialized");
    return;
  }
  parts_->neighbours.logger.log("🔄 Manually triggering geofence refetch");
  parts_->fetch(parts_->storedApiKey, "manual");
}

void GeofenceService::Parts::fetch(const std::string& apiKey, std::string_view reason) {
  auto fix = storedLocationManager ? storedLocationManager->location() : std::nullopt;
  if (!fix) fix = lastKnownLocation;
  if (!fix) {
    neighbours.logger.error(fmt::format("Geofence fetch ({}): no CLLocation yet", reason));
    return;
  }
  request(apiKey, *fix, reason);
}

void GeofenceService::Parts::request(const std::string& apiKey, const Location& fix,
                                     std::string_view reason) {
  if (isFetchInFlight) {
    neighbours.logger.log(fmt::format("⏭️ Geofence fetch ({}) skipped: fetch already in flight", reason));
    return;
  }
  isFetchInFlight = true;
  lastFetchAt = phone.clock.now();
  lastFetchLocation = fix;
  lastKnownLocation = fix;
  const APIService& api = *neighbours.api;
  auto asking = GeofenceRequest::of({.baseUrl = api.transmissionUrl(env),
                                     .position = fix.coordinate,
                                     .segments = api.segments(),
                                     .credentials = api.effectiveTransmissionCredentials(apiKey),
                                     .reason = reason});
  neighbours.logger.log(asking.logLine);
  fetcher.send(std::move(asking.http), [this, reason](const auto& answer) { finish(answer, reason); });
}

void GeofenceService::Parts::finish(const Result<CampaignFetch::Answer>& answer, std::string_view reason) {
  if (answer) publish(**answer);
  isFetchInFlight = false;
  if (!answer) {
    neighbours.logger.error(
        fmt::format("❌ Geofence fetch ({}) failed: {}", reason, answer.error().description));
  }
}

void GeofenceService::Parts::publish(const CampaignAnswer& answer) {
  const CampaignData& data = *answer.data();
  neighbours.logger.log(fmt::format("✅ Geofence fetch OK – {} campaigns", data.campaignsArray.size()));
  setCurrent(answer);
  campaigns.send(data);
  push.dispatch(data);
  neighbours.foreground.takePolygons(answer.polygons());
  neighbours.background.takePolygons(answer.polygons());
  setPolygons(answer);
}

void GeofenceService::Parts::setCurrent(const CampaignAnswer& answer) {
  current = answer.data();
  currentSubject.send(current);
}

void GeofenceService::Parts::setPolygons(const CampaignAnswer& answer) {
  polygons.clear();
  for (const auto& entry : answer.polygons()->set().polygons()) polygons.push_back(entry.polygon);
  polygonsSubject.send(polygons);
}

void GeofenceService::Parts::restartTimer() {
  timerCancellable = {};
  if (storedApiKey.empty()) return;
  timerCancellable = phone.main.every(refreshPolicy::timerInterval(phone.application.state()),
                                      [this, apiKey = storedApiKey] { fetch(apiKey, "timer"); });
}

void GeofenceService::Parts::observeApplication() {
  if (!appStateObservers.empty()) return;
  for (const auto signal : {ApplicationSignal::didEnterBackground, ApplicationSignal::willEnterForeground}) {
    appStateObservers.add(phone.application.observe(signal, [this] { restartTimer(); }));
  }
}

void GeofenceService::Parts::takeFix(const Location& fix) {
  lastKnownLocation = fix;
  if (storedApiKey.empty()) return;
  refreshPolicy::FixSeen seen{phone.application.state(), fix.horizontalAccuracy, {}, {}};
  if (lastFetchAt) seen.sinceLastFetch = phone.clock.now() - *lastFetchAt;
  if (lastFetchLocation) seen.metresFromLastFetch = distance(fix.coordinate, lastFetchLocation->coordinate);
  if (!refreshPolicy::wantsBackgroundRefresh(seen)) return;
  neighbours.logger.log(fmt::format("📍 Significant background location update ({}m) → refreshing geofences",
                                    refreshPolicy::wholeMetres(seen.metresFromLastFetch)));
  request(storedApiKey, fix, "significantLocationChange");
}

std::shared_ptr<const CampaignData> GeofenceService::current() {
  const Turn turn = parts_->phone.main.enter();
  return parts_->current;
}

Publisher<std::shared_ptr<const CampaignData>>& GeofenceService::currentPublisher() {
  return parts_->currentSubject;
}

std::vector<Polygon> GeofenceService::currentPolygons() const {
  const Turn turn = parts_->phone.main.enter();
  return parts_->polygons;
}

Publisher<std::vector<Polygon>>& GeofenceService::polygonsPublisherPublic() {
  return parts_->polygonsSubject;
}

Publisher<CampaignData>& GeofenceService::campaigns() {
  return parts_->campaigns;
}

}  // namespace orlan
