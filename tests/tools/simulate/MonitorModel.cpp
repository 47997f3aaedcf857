#include "tools/simulate/MonitorModel.hpp"

#include <algorithm>
#include <cmath>

namespace orlan::simulate::life {
namespace {

using namespace std::chrono_literals;

std::string text(std::int64_t number) {
  return std::to_string(number);
}

bool isIn(const Area& area, Coordinate at) {
  return std::abs(at.latitude - area.centre.latitude) < halfSide &&
         std::abs(at.longitude - area.centre.longitude) < halfSide;
}

double radiusOf(const Area& area) {
  const auto [lat, lon] = area.centre;
  return std::clamp(distance(area.centre, {lat - halfSide, lon - halfSide}), 100.0, 1000.0);
}

}  // namespace

std::string Area::identifier() const {
  return "camp_" + text(campaign) + "_" + text(location);
}

void MonitorModel::advance(Duration now) {
  now_ = now;
  if (process_.updatesEnd && *process_.updatesEnd <= now) stopUpdates();
}

void MonitorModel::setClock(TimePoint wall) {
  wallAtZero_ = wall - now_;
}

void MonitorModel::relaunch(ApplicationState state) {
  state_ = state;
  process_ = {};
}

void MonitorModel::bearForeground() {
  if (!process_.foregroundBorn) process_.foregroundBorn = wall();
}

void MonitorModel::bearBackground() {
  if (!process_.backgroundBorn) process_.backgroundBorn = wall();
}

void MonitorModel::registered() {
  bearBackground();
  process_.paused = state_ == ApplicationState::active;
  if (process_.paused) setInFront(true);
  process_.observes = true;
}

void MonitorModel::setInFront(bool inFront) {
  bearForeground();
  if (inFront && !process_.inFront) process_.lastDelivered.reset();
  process_.inFront = inFront;
  process_.paused = inFront;
  say(inFront ? "foreground updates on" : "foreground updates off");
}

void MonitorModel::move(ApplicationState to) {
  if (to == state_) return;
  const auto from = state_;
  state_ = to;
  if (from == ApplicationState::background) signal(ApplicationSignal::willEnterForeground);
  if (to == ApplicationState::background) signal(ApplicationSignal::didEnterBackground);
}

void MonitorModel::signal(ApplicationSignal signal) {
  if (!process_.observes) return;
  if (signal == ApplicationSignal::willEnterForeground) setInFront(true);
  if (signal == ApplicationSignal::didEnterBackground) setInFront(false);
}

void MonitorModel::fixes(const std::vector<Location>& batch) {
  const Location& last = batch.back();
  position_ = last.coordinate;
  if (process_.inFront && (!process_.lastDelivered || distance(*process_.lastDelivered, position_) >= 10.0)) {
    process_.lastDelivered = position_;
    foregroundTakes(batch.front());
  }
  for (Region& region : regions_) {
    const double metres = distance(position_, region.area.centre);
    const double radius = radiusOf(region.area);
    const double beyond = radius + std::min(last.horizontalAccuracy, 100.0);
    if (region.inside ? metres > beyond : metres <= radius) cross(region.area.identifier(), !region.inside);
  }
}

void MonitorModel::foregroundTakes(const Location& fix) {
  std::set<std::int64_t> inside;
  for (const Area& area : process_.tracked) {
    const bool in = isIn(area, fix.coordinate);
    if (in) inside.insert(area.campaign);
    if (in != process_.active.contains(area.campaign)) foregroundReacts(area.campaign, in);
  }
  process_.active = inside;
}

void MonitorModel::foregroundReacts(std::int64_t campaign, bool entering) {
  const auto first = std::find_if(process_.tracked.begin(), process_.tracked.end(),
                                  [&](const Area& area) { return area.campaign == campaign; });
  say((entering ? "foreground enter " : "foreground exit ") + first->identifier());
  if (entering) {
    say("notify in " + text(campaign));
  } else {
    exitAnnounced(campaign, *process_.foregroundBorn, "foreground");
  }
}

void MonitorModel::cross(const std::string& identifier, bool entering) {
  say((entering ? "region enter " : "region exit ") + identifier);
  for (Region& region : regions_) {
    if (region.area.identifier() == identifier) region.inside = entering;
  }
  if (process_.listens) report(identifier, entering);
}

void MonitorModel::report(const std::string& identifier, bool entering) {
  if (process_.paused) return say("skipping: paused");
  const auto watched = process_.watched.find(identifier);
  if (watched == process_.watched.end()) return;
  const std::int64_t campaign = watched->second.campaign;
  if (entering == process_.inside.contains(identifier)) {
    return say(entering ? "skipping: preserved" : "skipping: false exit");
  }
  say((entering ? "background enter " : "background exit ") + identifier);
  if (entering) {
    process_.inside.insert(identifier);
    say("notify in " + text(campaign));
    startUpdates();
  } else {
    process_.inside.erase(identifier);
    exitAnnounced(campaign, *process_.backgroundBorn, "background");
    if (process_.inside.empty()) stopUpdates();
  }
}

void MonitorModel::exitAnnounced(std::int64_t campaign, TimePoint born, const char* monitor) {
  const bool restarted = storedStart_ && born > *storedStart_;
  const auto last = lastAnnounced_.find(campaign);
  storedStart_ = born;
  if (!restarted && last != lastAnnounced_.end() && wall() - last->second < 900s) {
    return say(std::string(monitor) + " cooldown active");
  }
  say(std::string(monitor) + (restarted ? " restarted" : " cooldown passed"));
  lastAnnounced_[campaign] = wall();
  say("notify out " + text(campaign));
}

void MonitorModel::startUpdates() {
  if (process_.updatesEnd) return;
  process_.updatesEnd = now_ + 600s;
  say("background updates on");
}

void MonitorModel::stopUpdates() {
  if (!process_.updatesEnd) return;
  process_.updatesEnd.reset();
  say("background updates off");
}

void MonitorModel::published(const std::vector<Area>& areas) {
  bearForeground();
  process_.tracked = areas;
  std::set<std::int64_t> campaigns;
  for (const Area& area : areas) campaigns.insert(area.campaign);
  if (campaigns == process_.campaigns) return;
  process_.campaigns = campaigns;
  lookAgain(areas);
}

void MonitorModel::lookAgain(const std::vector<Area>& areas) {
  std::set<std::int64_t> preserved;
  for (const auto& identifier : process_.inside) preserved.insert(process_.watched[identifier].campaign);
  for (const Region& region : regions_) say("region stop " + region.area.identifier());
  if (preserved.empty()) stopUpdates();
  auto chosen = areas;
  if (chosen.size() > 20) {
    std::stable_sort(chosen.begin(), chosen.end(), [this](const Area& a, const Area& b) {
      return distance(position_, a.centre) < distance(position_, b.centre);
    });
    chosen.resize(20);
  }
  regions_.clear();
  process_.watched.clear();
  process_.inside.clear();
  process_.listens = true;
  for (const Area& area : chosen) {
    say("region start " + area.identifier());
    regions_.push_back({area});
    process_.watched[area.identifier()] = area;
    if (preserved.contains(area.campaign)) process_.inside.insert(area.identifier());
  }
  if (process_.inside.empty()) {
    stopUpdates();
  } else {
    startUpdates();
  }
}

void MonitorModel::clearCooldown(bool background) {
  if (background) {
    bearBackground();
  } else {
    bearForeground();
  }
  lastAnnounced_.clear();
}

}  // namespace orlan::simulate::life
