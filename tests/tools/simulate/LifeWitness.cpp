#include "tools/simulate/LifeWitness.hpp"

#include <fmt/format.h>

#include <utility>

#include "orlan/base/text.hpp"

namespace orlan::simulate::life {
namespace {

std::vector<Area> areasOf(const CampaignData& data) {
  std::vector<Area> areas;
  for (const auto& campaign : data.campaignsArray) {
    const auto& ring = campaign.location.geofence;
    areas.push_back(
        {campaign.campaign.campaignId,
         campaign.location.locationId,
         {(ring[0].latitude() + ring[2].latitude()) / 2, (ring[0].longitude() + ring[2].longitude()) / 2}});
  }
  return areas;
}

/// What a line of the log says of a monitor, in the words of the model; empty when it says nothing.
std::string meaning(std::string_view message) {
  const auto opens = [&](std::string_view part) { return message.starts_with(part); };
  if (!opens("🔔") && !opens("📥") && !opens("📤")) return {};
  const auto has = [&](std::string_view part) { return message.find(part) != std::string_view::npos; };
  const std::string who = has("🔔 BG") ? "background " : "foreground ";
  if (has("cooldown active")) return who + "cooldown active";
  if (has("cooldown passed")) return who + "cooldown passed";
  if (has("App restarted")) return who + "restarted";
  if (has("SKIPPING (paused")) return "skipping: paused";
  if (has("SKIPPING (preserved")) return "skipping: preserved";
  if (has("SKIPPING (false exit")) return "skipping: false exit";
  return {};
}

}  // namespace

LifeWitness::LifeWitness(const Scenario& scenario, std::function<Duration()> now)
    : scenario_(scenario),
      now_(std::move(now)),
      model_(scenario.phone.application, scenario.phone.location.position->coordinate) {}

Spectator LifeWitness::spectator() {
  return {this, [this](OrlanServices& services, const auto&...) { watch(services); }};
}

void LifeWitness::watch(OrlanServices& services) {
  catchUp();
  subscriptions_ = {};
  inside_.clear();
  inCharge_.clear();
  const auto crossings = [this](auto& monitor, const std::string& name) {
    const auto follow = [&](Publisher<Crossing>& stream, bool entering) {
      subscriptions_.add(stream.subscribe([this, name, entering](const Crossing& crossing) {
        guardCrossing(name, entering, crossing);
        heard(fmt::format("{} {} camp_{}_{}", name, entering ? "enter" : "exit", crossing.first,
                          crossing.second));
      }));
    };
    follow(monitor.enterPublisher(), true);
    follow(monitor.exitPublisher(), false);
  };
  services.foregroundMonitor.onBuilt([=](ForegroundGeofenceMonitor& it) { crossings(it, "foreground"); });
  services.backgroundMonitor.onBuilt([=](BackgroundRegionMonitor& it) { crossings(it, "background"); });
  services.geofence.onBuilt([this](GeofenceService& service) {
    subscriptions_.add(service.campaigns().subscribe([this](const CampaignData& data) {
      catchUp();
      mustBeQuiet("other campaigns");
      model_.published(areasOf(data));
      inside_.clear();
    }));
  });
}

/// What the steps did up to now, before anything comes of it.
void LifeWitness::catchUp() {
  const Duration now = now_();
  while (next_ < scenario_.steps.size() && scenario_.steps[next_].at <= now) {
    const Step& step = scenario_.steps[next_];
    mustBeQuiet(step.call.c_str());
    ++next_;
    model_.advance(step.at);
    perform(step.action);
  }
  model_.advance(now);
}

void LifeWitness::perform(const Action& action) {
  if (const auto* relaunch = std::get_if<step::Relaunch>(&action)) model_.relaunch(relaunch->application);
  if (const auto* move = std::get_if<step::MoveApplication>(&action)) model_.move(move->to);
  if (const auto* raise = std::get_if<step::RaiseSignal>(&action)) model_.signal(raise->signal);
  if (const auto* crossing = std::get_if<step::CrossRegion>(&action)) {
    model_.cross(crossing->identifier, crossing->entering);
  }
  if (const auto* clock = std::get_if<step::SetClock>(&action)) {
    model_.setClock(clock->to);
    announced_.clear();
  }
  if (const auto* clear = std::get_if<step::ClearCooldown>(&action)) {
    model_.clearCooldown(clear->background);
    announced_.clear();
  }
  if (const auto* batch = std::get_if<step::Fixes>(&action)) {
    std::vector<Location> fixes;
    for (const Fix& fix : batch->fixes) fixes.push_back({fix.coordinate, fix.accuracy, {}});
    model_.fixes(fixes);
  }
}

void LifeWitness::consoleLine(std::string_view, std::string_view message) {
  if (message.starts_with("Auth OK")) {
    catchUp();
    mustBeQuiet("a registration");
    model_.registered();
  } else if (message.starts_with("🟢 FG-Monitor started")) {
    inCharge_ = "foreground";
  } else if (message.starts_with("🔴 FG-Monitor stopped") ||
             message.starts_with("📱 Skipping FG monitor start")) {
    inCharge_ = "background";
  } else if (const auto line = meaning(message); !line.empty()) {
    lastVerdict_ = line;
    heard(line);
  }
}

void LifeWitness::notificationScheduled(const NotificationRequest& request) {
  guardAnnouncement(request.content.title);
  heard("notify " + request.content.title);
}

void LifeWitness::locationUpdates(std::string_view manager, bool running, double, double) {
  if (manager == "permission") return;
  heard(std::string(manager) + (running ? " updates on" : " updates off"));
}

void LifeWitness::region(phone::RegionAction action, const CircularRegion& region) {
  const char* const words[] = {"start", "stop", "enter", "exit"};
  if (action == phone::RegionAction::start && ++regions_ > 20) wrong("more than 20 regions");
  if (action == phone::RegionAction::stop) --regions_;
  heard(fmt::format("region {} {}", words[static_cast<std::size_t>(action)], region.identifier));
}

void LifeWitness::heard(const std::string& line) {
  catchUp();
  auto& expected = model_.expected;
  if (expected.empty()) return wrong(fmt::format("nothing was to be heard, but: {}", line));
  if (expected.front() != line) wrong(fmt::format("expected: {}; heard: {}", expected.front(), line));
  expected.pop_front();
}

void LifeWitness::mustBeQuiet(const char* before) {
  if (model_.expected.empty()) return;
  wrong(fmt::format("not heard before {}: {}", before, model_.expected.front()));
  model_.expected.clear();
}

void LifeWitness::guardCrossing(const std::string& monitor, bool entering, const Crossing& crossing) {
  if (monitor != inCharge_) wrong("a reaction of the " + monitor + " monitor, which is not in charge");
  bool& inside = inside_[fmt::format("{} {} {}", monitor, crossing.first, crossing.second)];
  if (inside && entering) wrong("two entries without an exit in the " + monitor + " monitor");
  inside = entering;
}

void LifeWitness::guardAnnouncement(const std::string& title) {
  if (!title.starts_with("out")) return;
  const TimePoint now = TimePoint() + now_();
  const auto last = announced_.find(title);
  if (last != announced_.end() && now - last->second < std::chrono::seconds(900) &&
      lastVerdict_.ends_with("passed")) {
    wrong("two announcements within the cooldown: " + title);
  }
  announced_[title] = now;
}

void LifeWitness::wrong(const std::string& what) {
  if (!wrong_)
    wrong_ = fmt::format("at {} s, after step {}: {}", text::fixed(seconds(now_()), 3), next_, what);
}

std::optional<std::string> LifeWitness::verdict() {
  catchUp();
  mustBeQuiet("the end");
  return wrong_;
}

}  // namespace orlan::simulate::life
