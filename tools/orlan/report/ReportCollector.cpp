#include "tools/orlan/report/ReportCollector.hpp"

#include <algorithm>
#include <utility>

#include "orlan/platform/Url.hpp"

namespace orlan::report {

namespace {

constexpr char scheduled[] = "scheduled";

std::string pathOf(const std::string& url) {
  const auto parts = parseUrl(url);
  if (!parts) return url;  // a phone refuses it, which the report shows
  return parts->path.empty() ? "/" : std::string(parts->path);
}

}  // namespace

ReportCollector::ReportCollector(std::string title, TimePoint begin, std::chrono::seconds utcOffset,
                                 std::function<Duration()> elapsed, ReportListener* listener)
    : elapsed_(std::move(elapsed)), listener_(listener) {
  data_.title = std::move(title);
  data_.begin = begin;
  data_.utcOffset = utcOffset;
}

void ReportCollector::watch(OrlanServices& services, ApplicationState state) {
  subscriptions_ = {};
  inBackground(state == ApplicationState::background);
  const auto hearCrossings = [this](auto& monitor, std::string_view name) {
    subscriptions_.add(monitor.enterPublisher().subscribe(
        [this, name](const orlan::Crossing& ids) { crossed(true, name, ids.first, ids.second); }));
    subscriptions_.add(monitor.exitPublisher().subscribe(
        [this, name](const orlan::Crossing& ids) { crossed(false, name, ids.first, ids.second); }));
  };
  services.foregroundMonitor.onBuilt(
      [hearCrossings](ForegroundGeofenceMonitor& monitor) { hearCrossings(monitor, "foreground"); });
  services.backgroundMonitor.onBuilt([this, hearCrossings](BackgroundRegionMonitor& monitor) {
    hearCrossings(monitor, "background");
    subscriptions_.add(monitor.circlesPublisher().subscribe([this](const std::vector<Circle>& circles) {
      const std::lock_guard lock(mutex_);
      data_.circles = circles;
    }));
  });
  services.geofence.onBuilt([this](GeofenceService& geofence) {
    if (const auto cached = geofence.current()) campaignsArrived(*cached);
    subscriptions_.add(
        geofence.campaigns().subscribe([this](const CampaignData& data) { campaignsArrived(data); }));
  });
}

void ReportCollector::note(std::string kind, std::string text) {
  const Moment moment{elapsed_(), std::move(kind), std::move(text)};
  {
    const std::lock_guard lock(mutex_);
    data_.moments.push_back(moment);
  }
  if (listener_) listener_->noted(moment);
}

ReportData ReportCollector::data() const {
  const Duration length = elapsed_();
  const std::lock_guard lock(mutex_);
  ReportData copy = data_;
  copy.length = length;
  if (backgroundSince_) copy.inBackground.push_back({*backgroundSince_, length});
  return copy;
}

std::optional<NotificationRequest> ReportCollector::shown(std::size_t number) const {
  const std::lock_guard lock(mutex_);
  const auto found = std::ranges::find(data_.notifications, number, &Notification::number);
  const bool isUp =
      found != data_.notifications.end() && (found->state == "presented" || found->state == "delivered");
  return isUp ? std::optional(found->request) : std::nullopt;
}

std::size_t ReportCollector::openRequests() const {
  const std::lock_guard lock(mutex_);
  return open_.size();
}

void ReportCollector::consoleLines(const ConsoleLines& lines) {
  lines.forEach([this](const ConsoleLine& line) {
    if (listener_) listener_->logged(line.level, line.message);
    if (line.level == "ERROR") note("error", std::string(line.message));
  });
}

void ReportCollector::request(phone::RequestId id, const HttpRequest& request) {
  const Duration at = elapsed_();
  const std::lock_guard lock(mutex_);
  open_[id] = data_.requests.size();
  data_.requests.push_back({at, request.method, pathOf(request.url), {}});
}

void ReportCollector::response(phone::RequestId id, const Result<HttpReply>& result) {
  const std::lock_guard lock(mutex_);
  const auto found = open_.find(id);
  if (found == open_.end()) return;
  std::string& outcome = data_.requests[found->second].outcome;
  if (!result) {
    outcome = result.error().description;
  } else {
    outcome = result->status ? std::to_string(*result->status) : "not HTTP";
  }
  open_.erase(found);
}

void ReportCollector::notificationScheduled(const NotificationRequest& request) {
  notificationState(request, scheduled);
}

void ReportCollector::notificationRefused(const NotificationRequest& request, const Error& why) {
  notificationState(request, "refused: " + why.description);
}

void ReportCollector::notificationPresented(const NotificationRequest& request, std::uint32_t) {
  notificationState(request, "presented");
}

void ReportCollector::notificationDelivered(const NotificationRequest& request) {
  notificationState(request, "delivered");
}

void ReportCollector::notificationTapped(const NotificationResponse& response) {
  std::string which;
  {
    const std::lock_guard lock(mutex_);
    const auto found = numbers_.find(response.request.identifier);
    if (found != numbers_.end()) {
      data_.notifications[found->second - 1].tapped = true;
      which = "#" + std::to_string(found->second) + " ";
    }
  }
  note("tapped", which + response.request.content.title);
}

void ReportCollector::fixes(std::span<const Location> batch) {
  const Duration at = elapsed_();
  const std::lock_guard lock(mutex_);
  for (const Location& fix : batch) {
    if (fix.horizontalAccuracy >= 0) data_.fixes.push_back({at, fix.coordinate, fix.horizontalAccuracy});
  }
}

void ReportCollector::applicationSignal(ApplicationSignal signal, ApplicationState) {
  switch (signal) {
    case ApplicationSignal::didEnterBackground:
      inBackground(true);
      return note("application", "went to the background");
    case ApplicationSignal::willEnterForeground:
      inBackground(false);
      return note("application", "came to the front");
    case ApplicationSignal::didBecomeActive:
      return note("application", "became active");
    case ApplicationSignal::willResignActive:
      return note("application", "resigned active");
  }
}

void ReportCollector::inBackground(bool now) {
  const Duration at = elapsed_();
  const std::lock_guard lock(mutex_);
  if (now == backgroundSince_.has_value()) return;
  if (now) {
    backgroundSince_ = at;
  } else {
    data_.inBackground.push_back({*std::exchange(backgroundSince_, std::nullopt), at});
  }
}

void ReportCollector::crossed(bool entry, std::string_view monitor, std::int64_t campaignId,
                              std::int64_t locationId) {
  Crossing crossing{elapsed_(), entry, std::string(monitor), campaignId, locationId, {}, {}};
  {
    const std::lock_guard lock(mutex_);
    crossing.campaign = campaignName(campaignId);
    crossing.where = position();
    data_.crossings.push_back(crossing);
  }
  if (listener_) listener_->crossed(crossing);
}

void ReportCollector::campaignsArrived(const CampaignData& campaigns) {
  note("fetch", std::to_string(campaigns.campaignsArray.size()) + " campaigns");
  const std::lock_guard lock(mutex_);
  for (const auto& campaign : campaigns.campaignsArray) {
    if (campaign.location.geofence.size() < 3) continue;
    Area area{campaign.campaign.campaignId, campaign.location.locationId, campaign.campaign.campaignName, {}};
    for (const auto& vertex : campaign.location.geofence) {
      area.vertices.push_back({vertex.latitude(), vertex.longitude()});
    }
    data_.put(std::move(area));
  }
}

void ReportCollector::notificationState(const NotificationRequest& request, std::string state) {
  Notification notification{0, elapsed_(), request, std::move(state), {}};
  {
    const std::lock_guard lock(mutex_);
    notification.where = position();
    const auto [known, isNew] = numbers_.try_emplace(request.identifier, data_.notifications.size() + 1);
    if (isNew) data_.notifications.emplace_back();
    notification.number = known->second;
    data_.notifications[known->second - 1] = notification;
  }
  if (listener_ && notification.state != scheduled) listener_->notified(notification);
}

std::optional<Coordinate> ReportCollector::position() const {
  if (data_.fixes.empty()) return std::nullopt;
  return data_.fixes.back().coordinate;
}

std::string ReportCollector::campaignName(std::int64_t campaignId) const {
  const auto found = std::ranges::find(data_.areas, campaignId, &Area::campaignId);
  return found == data_.areas.end() ? "campaign " + std::to_string(campaignId) : found->name;
}

}  // namespace orlan::report
